#pragma once

#include <libheif/heif.h>

namespace Platform {

/// What we call of libheif, found in the library once it is loaded.
struct HeifLibrary {
    decltype(&heif_context_alloc) allocateContext = nullptr;
    decltype(&heif_context_free) freeContext = nullptr;
    decltype(&heif_context_read_from_memory_without_copy) read = nullptr;
    decltype(&heif_context_get_primary_image_handle) primaryImage = nullptr;
    decltype(&heif_image_handle_release) releaseHandle = nullptr;
    decltype(&heif_image_handle_get_width) uprightWidth = nullptr;
    decltype(&heif_image_handle_get_height) uprightHeight = nullptr;
    decltype(&heif_image_handle_get_ispe_width) fileWidth = nullptr;
    decltype(&heif_image_handle_get_ispe_height) fileHeight = nullptr;
    decltype(&heif_image_handle_has_alpha_channel) hasAlpha = nullptr;
    decltype(&heif_image_handle_is_premultiplied_alpha) isPremultiplied = nullptr;
    decltype(&heif_decode_image) decode = nullptr;
    decltype(&heif_image_release) releaseImage = nullptr;
    decltype(&heif_image_get_width) imageWidth = nullptr;
    decltype(&heif_image_get_height) imageHeight = nullptr;
    decltype(&heif_image_get_plane_readonly) pixels = nullptr;
    decltype(&heif_image_handle_get_raw_color_profile_size) profileSize = nullptr;
    decltype(&heif_image_handle_get_raw_color_profile) profile = nullptr;
    decltype(&heif_image_handle_get_nclx_color_profile) codedColours = nullptr;
    decltype(&heif_nclx_color_profile_free) freeCodedColours = nullptr;
    decltype(&heif_image_handle_get_list_of_metadata_block_IDs) metadata = nullptr;
    decltype(&heif_image_handle_get_metadata_size) metadataSize = nullptr;
    decltype(&heif_image_handle_get_metadata) readMetadata = nullptr;
};

/// Loads the library at the first call. Null where it isn't installed or lacks something. Stays
/// loaded. Any thread.
const HeifLibrary* heifLibrary();

} // namespace Platform
