#pragma once

#include "Platform/TextLayout/Glyphs.h"

#include <QString>

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace Platform {

/// What glyphs of one size were read as elsewhere on the page. On a screen the same letter is drawn
/// with the same pixels again and again.
class GlyphMemory {
public:
    /// Notes that @p glyph, which must outlive the memory, was read as @p text. @p weight tells how
    /// sure that is.
    void learn(const Glyph& glyph, const QString& text, int weight);

    /// How well a text suits a glyph: the weights of what looks like it, the more the more alike.
    struct Opinion {
        QString text;
        double weight = 0;
        double likeness = 0; ///< Of the most alike: 1 where the pixels are the same.
    };

    /// What is known of @p glyph, the weightiest first.
    std::vector<Opinion> recall(const Glyph& glyph) const;

    /// Whether anything was read as @p text, whatever its looks.
    bool knows(const QString& text) const;

private:
    struct Exemplar {
        const Glyph* glyph = nullptr;
        std::vector<Opinion> opinions;
    };

    std::unordered_map<int, std::vector<Exemplar>> m_exemplarsBySize;
};

} // namespace Platform
