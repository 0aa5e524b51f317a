#include "frontend/export/xls/picture_identifier.h"

#include <sodium.h>

#include <array>

namespace vexa::frontend::biff {

std::string pictureIdentifier(std::string_view picture) {
    std::array<unsigned char, crypto_generichash_BYTES_MIN> hash{};
    static_assert(hash.size() == 16);
    crypto_generichash(hash.data(), hash.size(), reinterpret_cast<const unsigned char*>(picture.data()),
                       picture.size(), nullptr, 0);
    return {hash.begin(), hash.end()};
}

}  // namespace vexa::frontend::biff
