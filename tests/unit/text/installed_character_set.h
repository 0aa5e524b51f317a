// A character set for the length of one test.
#pragma once

#include <gtest/gtest.h>

#include "backend/text/character_set.h"

namespace vexa {

class InstalledCharacterSet {
  public:
    explicit InstalledCharacterSet(const char* name) {
        auto set = CharacterSet::find(name);
        EXPECT_NE(set, nullptr) << name;
        installCharacterSet(std::move(set));
    }
    InstalledCharacterSet(const InstalledCharacterSet&) = delete;
    InstalledCharacterSet& operator=(const InstalledCharacterSet&) = delete;
    ~InstalledCharacterSet() { installCharacterSet(nullptr); }
};

}  // namespace vexa
