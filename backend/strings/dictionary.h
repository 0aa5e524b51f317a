// Translated texts, by procedure and key.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace vexa {

/// The texts of one language. A key that a procedure lacks is its own text.
class StringDictionary {
  public:
    /// The dictionary that shown texts are looked up in; empty unless the program filled it.
    static StringDictionary& current();

    void add(std::string_view procedure, std::string_view key, std::string_view text);
    /// Forgets all texts; the procedure stays.
    void clear();

    /// The text of `key` in `procedure`, which lives until the dictionary is next changed, or `key` itself.
    [[nodiscard]] std::string_view lookUp(std::string_view procedure, std::string_view key) const;

    /// The procedure whose texts are looked up now; `BpProcedure` sets it.
    void setProcedure(std::string_view procedure) { procedure_ = procedure; }
    [[nodiscard]] const std::string& procedure() const { return procedure_; }

  private:
    std::map<std::string, std::map<std::string, std::string, std::less<>>, std::less<>> texts_;
    std::string procedure_;
};

}  // namespace vexa
