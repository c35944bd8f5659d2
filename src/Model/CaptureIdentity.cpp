#include "Model/CaptureIdentity.h"

#include <QByteArray>

#include <algorithm>
#include <charconv>

namespace Lumenote {

namespace {

constexpr std::string_view dateForm = "00000000-000000-000-";
constexpr std::string_view uuidForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// A '0' in @p form stands for a digit, an 'x' for a hexadecimal one, all else for itself.
bool hasForm(std::string_view text, std::string_view form)
{
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char c, char wanted) {
        return wanted == '0' ? isDigit(c) : wanted == 'x' ? isHexDigit(c) : c == wanted;
    });
}

int number(std::string_view text, size_t start, size_t length)
{
    int value = 0;
    std::from_chars(text.data() + start, text.data() + start + length, value);
    return value;
}

std::optional<QDateTime> dateFromText(std::string_view text)
{
    if (!hasForm(text, dateForm))
        return std::nullopt;
    const QDate date(number(text, 0, 4), number(text, 4, 2), number(text, 6, 2));
    const QTime time(
        number(text, 9, 2), number(text, 11, 2), number(text, 13, 2), number(text, 16, 3));
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC);
}

} // namespace

std::optional<QUuid> uuidFromText(std::string_view text)
{
    if (!hasForm(text, uuidForm))
        return std::nullopt;
    return QUuid::fromRfc4122(
        QByteArray::fromHex(QByteArray(text.data(), static_cast<qsizetype>(text.size()))));
}

std::string uuidText(const QUuid& uuid)
{
    return uuid.toString(QUuid::WithoutBraces).toUpper().toStdString();
}

std::optional<CaptureIdentity> CaptureIdentity::fromFileName(const std::filesystem::path& name)
{
    const auto stem = name.stem().native();
    const std::string_view text = stem;
    if (text.size() != dateForm.size() + uuidForm.size())
        return std::nullopt;
    const auto date = dateFromText(text.substr(0, dateForm.size()));
    const auto id = uuidFromText(text.substr(dateForm.size()));
    if (!date || !id)
        return std::nullopt;
    return CaptureIdentity{.id = *id, .capturedAt = *date};
}

std::string CaptureIdentity::fileName() const
{
    return capturedAt.toUTC().toString(u"yyyyMMdd-HHmmss-zzz").toStdString() + '-' + uuidText(id)
        + ".png";
}

} // namespace Lumenote
