#pragma once

#include "Platform/Tesseract/LineReader.h"

#include <QStringList>

#include <stop_token>
#include <vector>

namespace Platform {

/// Reads all lines of @p page in the languages that it is written in, of those in @p languages, and
/// answers for each line the surest reading.
///
/// Everything is read in the main language first: English where it is installed. Only where its
/// dictionary lacks many words the others are tried on a sample of doubtful lines, and those that
/// read most of it better on the other doubtful lines, or on all with words where much is doubtful.
Result<std::vector<LineReading>> readInBestLanguages(const PageLayout& page, LineReader& reader,
    const QStringList& languages, const std::stop_token& stop);

} // namespace Platform
