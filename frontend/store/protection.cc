#include "frontend/store/protection.h"

#include <sodium.h>

#include <algorithm>
#include <limits>

namespace vexa::frontend {
namespace {

constexpr std::size_t headerBytes = crypto_secretstream_xchacha20poly1305_HEADERBYTES;
constexpr std::size_t addedBytes = crypto_secretstream_xchacha20poly1305_ABYTES;
constexpr unsigned char tagMessage = crypto_secretstream_xchacha20poly1305_TAG_MESSAGE;
constexpr unsigned char tagFinal = crypto_secretstream_xchacha20poly1305_TAG_FINAL;

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

unsigned char* bytesOf(std::string& text, std::size_t offset) {
    return reinterpret_cast<unsigned char*>(text.data()) + offset;
}

/// A key and the stream's state, wiped when they die.
class Cipher {
  public:
    Cipher() = default;
    Cipher(const Cipher&) = delete;
    Cipher& operator=(const Cipher&) = delete;
    ~Cipher() {
        sodium_memzero(key_.data(), key_.size());
        sodium_memzero(&state, sizeof state);
    }

    /// False when the cost is below what is possible, or the memory cannot be had.
    bool makeKey(const std::string& form, const Protection& protection) {
        return sodium_init() >= 0 && protection.cost.memory <= std::numeric_limits<std::size_t>::max() &&
               crypto_pwhash_argon2id(key_.data(), key_.size(), form.data(), form.size(),
                                      protection.salt.data(), protection.cost.operations,
                                      static_cast<std::size_t>(protection.cost.memory),
                                      crypto_pwhash_argon2id_ALG_ARGON2ID13) == 0;
    }
    [[nodiscard]] const unsigned char* key() const { return key_.data(); }

    crypto_secretstream_xchacha20poly1305_state state{};

  private:
    std::array<unsigned char, crypto_secretstream_xchacha20poly1305_KEYBYTES> key_{};
};

void push(Cipher& cipher, std::string_view plain, std::string_view authenticated, unsigned char tag,
          std::string& sealed) {
    const std::size_t offset = sealed.size();
    sealed.resize(offset + plain.size() + addedBytes);
    crypto_secretstream_xchacha20poly1305_push(&cipher.state, bytesOf(sealed, offset), nullptr,
                                               bytesOf(plain), plain.size(), bytesOf(authenticated),
                                               authenticated.size(), tag);
}

bool pull(Cipher& cipher, std::string_view sealed, std::string_view authenticated, unsigned char expectedTag,
          std::string& plain) {
    const std::size_t offset = plain.size();
    plain.resize(offset + sealed.size() - addedBytes);
    unsigned char tag = 0;
    return crypto_secretstream_xchacha20poly1305_pull(&cipher.state, bytesOf(plain, offset), nullptr, &tag,
                                                      bytesOf(sealed), sealed.size(), bytesOf(authenticated),
                                                      authenticated.size()) == 0 &&
           tag == expectedTag;
}

bool pullChunks(Cipher& cipher, std::string_view sealed, std::string& plain) {
    plain.reserve(sealed.size());
    while (!sealed.empty()) {
        const std::size_t length = std::min(sealed.size(), sealedChunkBytes + addedBytes);
        const bool last = length == sealed.size();
        if (length < addedBytes ||
            !pull(cipher, sealed.substr(0, length), {}, last ? tagFinal : tagMessage, plain)) {
            return false;
        }
        sealed.remove_prefix(length);
    }
    return true;
}

}  // namespace

Protection makeProtection(const KeyCost& cost) {
    Protection protection{cost, {}};
    if (sodium_init() >= 0) {
        randombytes_buf(protection.salt.data(), protection.salt.size());
    }
    return protection;
}

StoreResult seal(const std::string& form, const Protection& protection, std::string_view authenticated,
                 std::string_view plain, std::string& sealed) {
    Cipher cipher;
    if (!cipher.makeKey(form, protection)) {
        return StoreProblem::noMemory;
    }
    sealed.assign(headerBytes, '\0');
    sealed.reserve(headerBytes + plain.size() + addedBytes * (plain.size() / sealedChunkBytes + 2));
    crypto_secretstream_xchacha20poly1305_init_push(&cipher.state, bytesOf(sealed, 0), cipher.key());
    // An empty chunk first: it tells a wrong password from damage further on.
    push(cipher, {}, authenticated, tagMessage, sealed);
    do {
        const std::string_view chunk = plain.substr(0, sealedChunkBytes);
        plain.remove_prefix(chunk.size());
        push(cipher, chunk, {}, plain.empty() ? tagFinal : tagMessage, sealed);
    } while (!plain.empty());
    return {};
}

StoreResult unseal(const std::string& form, const Protection& protection, std::string_view authenticated,
                   std::string_view sealed, std::string& plain) {
    plain.clear();
    // Header, the empty first chunk and a last one, which may be empty too.
    if (sealed.size() < headerBytes + 2 * addedBytes) {
        return {StoreProblem::damaged, "the protected content"_text};
    }
    Cipher cipher;
    if (!cipher.makeKey(form, protection)) {
        return StoreProblem::noMemory;
    }
    std::string nothing;
    if (crypto_secretstream_xchacha20poly1305_init_pull(&cipher.state, bytesOf(sealed), cipher.key()) != 0 ||
        !pull(cipher, sealed.substr(headerBytes, addedBytes), authenticated, tagMessage, nothing)) {
        return StoreProblem::passwordWrong;
    }
    if (!pullChunks(cipher, sealed.substr(headerBytes + addedBytes), plain)) {
        plain.clear();
        return {StoreProblem::damaged, "the protected content"_text};
    }
    return {};
}

std::string toBase64(const Salt& salt) {
    std::string text(sodium_base64_ENCODED_LEN(16, sodium_base64_VARIANT_URLSAFE_NO_PADDING), '\0');
    sodium_bin2base64(text.data(), text.size(), salt.data(), salt.size(),
                      sodium_base64_VARIANT_URLSAFE_NO_PADDING);
    text.resize(text.size() - 1);
    return text;
}

bool fromBase64(std::string_view text, Salt& salt) {
    std::size_t length = 0;
    return sodium_base642bin(salt.data(), salt.size(), text.data(), text.size(), nullptr, &length, nullptr,
                             sodium_base64_VARIANT_URLSAFE_NO_PADDING) == 0 &&
           length == salt.size();
}

}  // namespace vexa::frontend
