// Shown texts out of tables in memory, for as long as the object lives.
#pragma once

#include <initializer_list>
#include <string>

#include "backend/strings/dictionary.h"
#include "backend/strings/string_table.h"
#include "tests/unit/frontend/memory_file_system.h"
#include "tests/unit/strings/sample_tables.h"

namespace vexa {

class InstalledTexts {
  public:
    struct Text {
        const char *file, *key, *text;
    };

    InstalledTexts(std::initializer_list<Text> texts) {
        std::map<std::string, std::string> units;
        for (const Text& each : texts) {
            units[each.file] += std::string("<trans-unit id='") + each.key +
                                "'><source>English</source><target>" + each.text + "</target></trans-unit>";
        }
        for (const auto& [file, content] : units) {
            system_.files["\\texts\\" + file] = tableOf(content);
        }
        forgetStringTables();
        StringDictionary::current().open("\\texts");
    }
    ~InstalledTexts() {
        StringDictionary::current().open("");
        forgetStringTables();
    }
    InstalledTexts(const InstalledTexts&) = delete;
    InstalledTexts& operator=(const InstalledTexts&) = delete;

    [[nodiscard]] frontend::MemoryFileSystem& system() { return system_; }
    void remove(const std::string& file) { system_.files.erase("\\texts\\" + file); }

  private:
    frontend::MemoryFileSystem system_;
};

}  // namespace vexa
