// Any bytes as the name of a file in the capture folder. What is taken for a capture's is one by
// Qt's own parsers too, and gives the same name again.

#include "Model/CaptureIdentity.h"
#include "Target.h"

void tryBytes(const QByteArray& bytes)
{
    const std::filesystem::path name(bytes.toStdString());
    const auto identity = Lumenote::CaptureIdentity::fromFileName(name);
    if (!identity)
        return;
    constexpr qsizetype dateLength = 19;
    const auto stem = QString::fromStdString(name.stem().native());
    require(identity->id == QUuid::fromString(stem.mid(dateLength + 1)));
    auto date = QDateTime::fromString(stem.left(dateLength), u"yyyyMMdd-HHmmss-zzz");
    date.setTimeSpec(Qt::UTC);
    require(identity->capturedAt == date);
    require(identity->fileName() == stem.toUpper().toStdString() + ".png");
    require(Lumenote::CaptureIdentity::fromFileName(identity->fileName()) == identity);
}
