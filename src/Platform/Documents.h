#pragma once

#include "Platform/Error.h"

#include <QByteArray>

#include <filesystem>

namespace Platform {

/// Writes a file of the user's own, where they said, for whoever they let read their files. One
/// that was there is replaced as a whole, for good once this has returned; or, after a failure, it
/// is still whole, but for one case: when the last step alone fails, which is to make the name
/// durable. The message of an error is in the user's language. Blocks; any thread.
Result<void> saveDocument(const std::filesystem::path& file, const QByteArray& bytes);

} // namespace Platform
