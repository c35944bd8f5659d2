#include "Platform/Tesseract/EnginePool.h"

namespace Platform {

Result<std::unique_ptr<TesseractEngine>> EnginePool::take(const QString& language)
{
    {
        const std::scoped_lock hold(m_lock);
        auto& idle = m_idle[language];
        if (!idle.empty()) {
            auto engine = std::move(idle.back());
            idle.pop_back();
            return engine;
        }
    }
    return TesseractEngine::start(language);
}

bool EnginePool::hasIdle(const QString& language) const
{
    const std::scoped_lock hold(m_lock);
    const auto idle = m_idle.find(language);
    return idle != m_idle.end() && !idle->second.empty();
}

void EnginePool::giveBack(const QString& language, std::unique_ptr<TesseractEngine> engine)
{
    const std::scoped_lock hold(m_lock);
    auto& idle = m_idle[language];
    if (int(idle.size()) < m_mostIdle)
        idle.push_back(std::move(engine));
}

} // namespace Platform
