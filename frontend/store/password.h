// The encrypted form of a password: what may stand in a syntax file in the place of the password itself.
//
// It is 20 characters: base64url without padding of the first 15 bytes of Argon2id over the password's UTF-8
// bytes, with the salt "vexa password v1" and the cost `passwordCost`. The same password always has the same
// form. Every 20 characters of that alphabet are a form, and a form opens what its password opens.
#pragma once

#include <string>
#include <string_view>

namespace vexa::frontend {

/// The encrypted form of `password` (UTF-8); empty when the memory for it cannot be had. Wipe it after use.
[[nodiscard]] std::string encryptedPassword(std::string_view password);
/// Whether a text has the shape of an encrypted form.
[[nodiscard]] bool isEncryptedPassword(std::string_view text);
/// Overwrites a secret and makes it empty.
void wipe(std::string& secret);

}  // namespace vexa::frontend
