#include "backend/adapter/client_adapter.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

class QuietAdapter final : public ClientAdapter {
  public:
    bool isLocalMode() override { return false; }
    OutputController* outputController() override { return nullptr; }
    std::string exchangeExport(const std::string&) override { return {}; }
    std::string exchangeModify(const std::string&) override { return {}; }
};

TEST(GetAdapter, IsTheInstalledOneOrNone) {
    EXPECT_EQ(GetAdapter(), nullptr);
    QuietAdapter first;
    QuietAdapter second;
    installAdapter(&first);
    EXPECT_EQ(GetAdapter(), &first);
    installAdapter(&second);
    EXPECT_EQ(GetAdapter(), &second);
    installAdapter(nullptr);
    EXPECT_EQ(GetAdapter(), nullptr);
}

}  // namespace
}  // namespace vexa
