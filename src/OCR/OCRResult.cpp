#include "OCR/OCRResult.h"

#include <QStringList>

namespace Lumenote {

QString OCRResult::text() const
{
    QStringList texts;
    texts.reserve(lines.size());
    for (const auto& line : lines)
        texts.append(line.text);
    return texts.join(u'\n');
}

} // namespace Lumenote
