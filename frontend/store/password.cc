#include "frontend/store/password.h"

#include <sodium.h>

#include <algorithm>
#include <array>

#include "frontend/store/protection.h"

namespace vexa::frontend {
namespace {

constexpr std::size_t formBytes = 15;
constexpr std::size_t formCharacters = 20;
constexpr std::string_view applicationSalt = "vexa password v1";
static_assert(applicationSalt.size() == crypto_pwhash_argon2id_SALTBYTES);

bool isFormCharacter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
           (character >= '0' && character <= '9') || character == '-' || character == '_';
}

}  // namespace

std::string encryptedPassword(std::string_view password) {
    // 16 bytes are the least that Argon2id gives here; the last one is not used.
    std::array<unsigned char, crypto_pwhash_argon2id_BYTES_MIN> hash{};
    const auto* salt = reinterpret_cast<const unsigned char*>(applicationSalt.data());
    if (sodium_init() < 0 ||
        crypto_pwhash_argon2id(hash.data(), hash.size(), password.data(), password.size(), salt,
                               passwordCost.operations, passwordCost.memory,
                               crypto_pwhash_argon2id_ALG_ARGON2ID13) != 0) {
        return {};
    }
    std::string form(formCharacters + 1, '\0');
    sodium_bin2base64(form.data(), form.size(), hash.data(), formBytes,
                      sodium_base64_VARIANT_URLSAFE_NO_PADDING);
    sodium_memzero(hash.data(), hash.size());
    form.resize(formCharacters);
    return form;
}

bool isEncryptedPassword(std::string_view text) {
    return text.size() == formCharacters && std::all_of(text.begin(), text.end(), isFormCharacter);
}

void wipe(std::string& secret) {
    sodium_memzero(secret.data(), secret.size());
    secret.clear();
}

}  // namespace vexa::frontend
