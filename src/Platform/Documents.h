#pragma once

#include "Platform/Error.h"

#include <QByteArray>

#include <filesystem>

namespace Platform {

/// Writes a file of the user's own, where they said, for whoever they let read their files; one
/// that was there is replaced as a whole or, after a failure, still whole. The message of an error
/// is in the user's language. Blocks; any thread.
Result<void> saveDocument(const std::filesystem::path& file, const QByteArray& bytes);

} // namespace Platform
