// Keeps the content of a document from everyone who lacks its password: Argon2id makes the key from the
// password's encrypted form, XChaCha20-Poly1305 in a stream of chunks seals the content.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "frontend/store/store_result.h"

namespace vexa::frontend {

/// Names everything about the scheme that is not a number in the manifest.
inline constexpr char protectionScheme[] = "argon2id13+xchacha20poly1305-stream-65536";
inline constexpr std::size_t sealedChunkBytes = 65'536;

/// Passes over the memory, and bytes of it.
struct KeyCost {
    std::uint64_t operations = 2;
    std::uint64_t memory = 64ULL << 20;
};

/// Of an encrypted form, and of a document unless another is asked for.
inline constexpr KeyCost passwordCost{};

using Salt = std::array<unsigned char, 16>;

struct Protection {
    KeyCost cost;
    Salt salt{};
};

/// A protection with a fresh random salt.
[[nodiscard]] Protection makeProtection(const KeyCost& cost);

/// Seals `plain` for whoever knows the encrypted form `form`. `authenticated` (the manifest) is not part of
/// the result, but must be the same for `unseal`.
StoreResult seal(const std::string& form, const Protection& protection, std::string_view authenticated,
                 std::string_view plain, std::string& sealed);

/// Undoes `seal`. `passwordWrong` when the form is another one or `authenticated` was changed, `damaged` when
/// the sealed bytes were changed, cut or reordered; `plain` is then empty.
StoreResult unseal(const std::string& form, const Protection& protection, std::string_view authenticated,
                   std::string_view sealed, std::string& plain);

/// Base64url without padding, and back; false for anything that is not exactly 16 bytes in it.
[[nodiscard]] std::string toBase64(const Salt& salt);
[[nodiscard]] bool fromBase64(std::string_view text, Salt& salt);

}  // namespace vexa::frontend
