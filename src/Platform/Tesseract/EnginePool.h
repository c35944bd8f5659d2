#pragma once

#include "Platform/Tesseract/TesseractEngine.h"

#include <QString>

#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace Platform {

/// Warm engines, started only as they are needed. Whoever takes one gets it at once, so that an
/// engine that never comes back keeps no other from working. Any thread.
class EnginePool {
public:
    /// Keeps up to @p mostIdle engines of each language warm.
    explicit EnginePool(int mostIdle)
        : m_mostIdle(mostIdle)
    {
    }

    /// An idle engine for @p language, or else a new one.
    Result<std::unique_ptr<TesseractEngine>> take(const QString& language);

    /// Whether an engine for @p language is idle now.
    bool hasIdle(const QString& language) const;

    /// Gives an engine back, to be kept warm or ended.
    void giveBack(const QString& language, std::unique_ptr<TesseractEngine> engine);

private:
    const int m_mostIdle;
    mutable std::mutex m_lock;
    std::map<QString, std::vector<std::unique_ptr<TesseractEngine>>> m_idle;
};

} // namespace Platform
