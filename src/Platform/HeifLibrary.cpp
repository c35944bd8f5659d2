#include "Platform/HeifLibrary.h"

#include <dlfcn.h>
#include <optional>

namespace Platform {

namespace {

class Loader {
public:
    explicit Loader(void* library)
        : m_library(library)
    {
    }

    template <typename Function>
    Loader& find(Function*& function, const char* name)
    {
        function = reinterpret_cast<Function*>(m_library ? dlsym(m_library, name) : nullptr);
        m_isComplete = m_isComplete && function != nullptr;
        return *this;
    }

    bool isComplete() const { return m_isComplete; }

private:
    void* m_library;
    bool m_isComplete = true;
};

std::optional<HeifLibrary> load()
{
    HeifLibrary heif;
    const bool isComplete =
        Loader(dlopen("libheif.so.1", RTLD_NOW | RTLD_LOCAL))
            .find(heif.allocateContext, "heif_context_alloc")
            .find(heif.freeContext, "heif_context_free")
            .find(heif.read, "heif_context_read_from_memory_without_copy")
            .find(heif.primaryImage, "heif_context_get_primary_image_handle")
            .find(heif.releaseHandle, "heif_image_handle_release")
            .find(heif.uprightWidth, "heif_image_handle_get_width")
            .find(heif.uprightHeight, "heif_image_handle_get_height")
            .find(heif.fileWidth, "heif_image_handle_get_ispe_width")
            .find(heif.fileHeight, "heif_image_handle_get_ispe_height")
            .find(heif.hasAlpha, "heif_image_handle_has_alpha_channel")
            .find(heif.isPremultiplied, "heif_image_handle_is_premultiplied_alpha")
            .find(heif.decode, "heif_decode_image")
            .find(heif.releaseImage, "heif_image_release")
            .find(heif.imageWidth, "heif_image_get_width")
            .find(heif.imageHeight, "heif_image_get_height")
            .find(heif.pixels, "heif_image_get_plane_readonly")
            .find(heif.profileSize, "heif_image_handle_get_raw_color_profile_size")
            .find(heif.profile, "heif_image_handle_get_raw_color_profile")
            .find(heif.codedColours, "heif_image_handle_get_nclx_color_profile")
            .find(heif.freeCodedColours, "heif_nclx_color_profile_free")
            .find(heif.metadata, "heif_image_handle_get_list_of_metadata_block_IDs")
            .find(heif.metadataSize, "heif_image_handle_get_metadata_size")
            .find(heif.readMetadata, "heif_image_handle_get_metadata")
            .isComplete();
    return isComplete ? std::optional(heif) : std::nullopt;
}

} // namespace

const HeifLibrary* heifLibrary()
{
    static const auto library = load();
    return library ? &*library : nullptr;
}

} // namespace Platform
