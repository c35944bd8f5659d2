#pragma once

#include <QString>

#include <filesystem>
#include <functional>
#include <optional>

namespace Platform {

/// The panel that asks where to save a PNG. Main thread only.
class SavePanel {
public:
    /// Where to, or nothing where the user thought better of it.
    using Answer = std::function<void(std::optional<std::filesystem::path>)>;

    virtual ~SavePanel() = default;

    /// Shows the panel above floating windows, comes back at once, and calls @p answer once, later,
    /// in the same thread.
    virtual void ask(const QString& suggestedName, Answer answer) = 0;
};

} // namespace Platform
