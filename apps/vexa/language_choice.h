// Which language of an installation the user sees.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vexa::program {

/// "de_DE" of "de_DE.UTF-8@euro"; what is no locale's name stays as it is.
[[nodiscard]] std::string_view languageOfLocale(std::string_view locale);

/// True for what can be a language's code: two or three letters, perhaps with a region: "en", "pt_BR".
[[nodiscard]] bool isLanguageCode(std::string_view code);

/// The folders that `code` can mean, the best first: the code as it is written, in the usual spelling
/// ("pt-br" is "pt_BR"), the way of writing that a region shares with another ("zh_HK" is "zh_TW"), the
/// language without its region ("de_AT" is "de"), and the region that a bare language means ("pt" is
/// "pt_BR").
[[nodiscard]] std::vector<std::string> languageFolders(std::string_view code);

}  // namespace vexa::program
