#include "Platform/Tesseract/GlyphMemory.h"

#include <algorithm>

namespace Platform {

namespace {

/// Glyphs less alike than this are of different letters. At 10 px "c" and "e" differ by 0.25.
constexpr double widestUnlikeness = 0.16;

/// Of one size. Noise makes every glyph another one, and all are compared with all.
constexpr std::size_t mostExemplars = 200;

int sizeKey(int width, int height)
{
    return width * 4096 + height;
}

void add(std::vector<GlyphMemory::Opinion>& opinions, const QString& text, double weight,
    double likeness)
{
    const auto known = std::find_if(opinions.begin(), opinions.end(),
        [&](const GlyphMemory::Opinion& opinion) { return opinion.text == text; });
    if (known == opinions.end())
        opinions.push_back({text, weight * likeness, likeness});
    else
        *known = {text, known->weight + weight * likeness, std::max(known->likeness, likeness)};
}

} // namespace

void GlyphMemory::learn(const Glyph& glyph, const QString& text, int weight)
{
    std::vector<Exemplar>& exemplars =
        m_exemplarsBySize[sizeKey(glyph.box.width(), glyph.box.height())];
    const auto same = std::find_if(exemplars.begin(), exemplars.end(), [&](const Exemplar& known) {
        return known.glyph->drop == glyph.drop && known.glyph->ink == glyph.ink;
    });
    if (same == exemplars.end() && exemplars.size() == mostExemplars)
        return;
    Exemplar& exemplar = same == exemplars.end() ? exemplars.emplace_back() : *same;
    if (!exemplar.glyph)
        exemplar.glyph = &glyph;
    add(exemplar.opinions, text, weight, 1);
}

std::vector<GlyphMemory::Opinion> GlyphMemory::recall(const Glyph& glyph) const
{
    std::vector<Opinion> opinions;
    for (int width = glyph.box.width() - 1; width <= glyph.box.width() + 1; ++width) {
        for (int height = glyph.box.height() - 1; height <= glyph.box.height() + 1; ++height) {
            const auto exemplars = m_exemplarsBySize.find(sizeKey(width, height));
            if (exemplars == m_exemplarsBySize.end())
                continue;
            for (const Exemplar& exemplar : exemplars->second) {
                const double likeness =
                    1 - unlikeness(glyph, *exemplar.glyph, widestUnlikeness) / widestUnlikeness;
                if (likeness <= 0)
                    continue;
                for (const Opinion& opinion : exemplar.opinions)
                    add(opinions, opinion.text, opinion.weight, likeness);
            }
        }
    }
    std::sort(opinions.begin(), opinions.end(),
        [](const Opinion& a, const Opinion& b) { return a.weight > b.weight; });
    return opinions;
}

bool GlyphMemory::knows(const QString& text) const
{
    return std::any_of(m_exemplarsBySize.begin(), m_exemplarsBySize.end(), [&](const auto& bucket) {
        return std::any_of(
            bucket.second.begin(), bucket.second.end(), [&](const Exemplar& exemplar) {
                return std::any_of(exemplar.opinions.begin(), exemplar.opinions.end(),
                    [&](const Opinion& opinion) { return opinion.text == text; });
            });
    });
}

} // namespace Platform
