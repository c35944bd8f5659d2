#include "CLIRunner.h"
#include "Log.h"
#include "OCR/OCRService.h"
#include "Platform/Bundle.h"
#include "Platform/Freedesktop/JournalLog.h"
#include "Platform/StandardStreams.h"
#include "Platform/Tesseract/TesseractRecognizer.h"

#include <QByteArrayList>

#include <memory>

namespace {

using namespace Lumenote;

void openLog()
{
    const auto bundle = Platform::mainBundle();
    Log::setSystemLog(std::make_shared<Platform::JournalLog>(),
        bundle ? bundle->identifier : QStringLiteral("Lumenote"));
}

std::unique_ptr<OCRService> makeOCRService()
{
    return std::make_unique<OCRService>(std::make_shared<Platform::TesseractRecognizer>());
}

} // namespace

int main(int argc, char** argv)
{
    Platform::guardStandardStreams();

    // The first mode named wins, in this order; a path behind --ocr may be any text, another mode's
    // name included.
    const QByteArrayList arguments(argv, argv + argc);
    if (const auto ocr = arguments.indexOf("--ocr"); ocr >= 0) {
        if (ocr + 1 == arguments.size())
            CLIRunner::usage();
        openLog();
        CLIRunner::run(arguments.at(ocr + 1).toStdString(), *makeOCRService());
    }
    if (arguments.contains("--self-test"))
        CLIRunner::selfTest();
    if (arguments.contains("--version"))
        CLIRunner::version();
    if (arguments.contains("--warm-up")) {
        openLog();
        CLIRunner::warmUp(*makeOCRService());
    }
    CLIRunner::noMode();
}
