// Any bytes as the recognised text of a capture. What is read can be stored and read again.

#include "Model/StoredText.h"
#include "Target.h"

#include <cmath>

void tryBytes(const QByteArray& bytes)
{
    const auto text = Lumenote::storedTextFromJson(bytes);
    if (!text)
        return;
    require(text->version == Lumenote::StoredText::currentVersion);
    for (const auto& line : text->lines)
        require(std::isfinite(line.x) && std::isfinite(line.y) && std::isfinite(line.width)
            && std::isfinite(line.height));
    require(Lumenote::storedTextFromJson(Lumenote::toJson(*text)) == text);
}
