// Who may do what with a file.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <string>

namespace vexa {

/// Rights for whoever runs this process and nobody else; what the folder would give is not added.
class OwnerOnly {
  public:
    OwnerOnly();
    ~OwnerOnly() = default;
    OwnerOnly(const OwnerOnly&) = delete;
    OwnerOnly& operator=(const OwnerOnly&) = delete;

    [[nodiscard]] bool works() const { return works_; }
    [[nodiscard]] SECURITY_ATTRIBUTES* attributes() { return &attributes_; }

  private:
    static constexpr std::size_t kLargestUser = sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE;
    static constexpr std::size_t kLargestList =
        sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) + SECURITY_MAX_SID_SIZE;

    alignas(TOKEN_USER) std::array<char, kLargestUser> user_{};
    alignas(ACL) std::array<char, kLargestList> list_{};
    SECURITY_DESCRIPTOR descriptor_{};
    SECURITY_ATTRIBUTES attributes_{};
    bool works_ = false;
};

/// Gives the new file the rights of the one whose place it will take, and what else users set on it. What
/// cannot be carried over is left: not every kind of disk has rights, and that is no reason to lose a
/// document.
void copyRightsAndAttributes(const std::wstring& from, const std::wstring& to);

}  // namespace vexa
