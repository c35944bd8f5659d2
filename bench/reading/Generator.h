#pragma once

#include <QString>

namespace Lumenote::Bench::Generator {

/// Draws the pictures of the set into @p folder, each with its manifest; with @p group those of
/// one group only. Needs a QGuiApplication. The same pictures come out every time. Answers whether
/// all of their text can be read by people; what is clipped or covered is told on standard error.
bool drawAll(const QString& folder, const QString& group);

/// What the names of doubled copies begin with.
inline const QString doubledPrefix = QStringLiteral("doubled-");

/// Saves @p picture doubled, smoothly, as @p target.
void saveDoubled(const QString& picture, const QString& target);

} // namespace Lumenote::Bench::Generator
