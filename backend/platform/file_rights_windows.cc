#include "backend/platform/file_rights_windows.h"

#include <vector>

namespace vexa {

OwnerOnly::OwnerOnly() {
    HANDLE token = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == 0) return;
    DWORD size = 0;
    const bool known =
        GetTokenInformation(token, TokenUser, user_.data(), static_cast<DWORD>(user_.size()), &size) != 0;
    CloseHandle(token);
    auto* const list = reinterpret_cast<ACL*>(list_.data());
    const PSID owner = known ? reinterpret_cast<const TOKEN_USER*>(user_.data())->User.Sid : nullptr;
    works_ = known && InitializeAcl(list, static_cast<DWORD>(list_.size()), ACL_REVISION) != 0 &&
             AddAccessAllowedAce(list, ACL_REVISION, FILE_ALL_ACCESS, owner) != 0 &&
             InitializeSecurityDescriptor(&descriptor_, SECURITY_DESCRIPTOR_REVISION) != 0 &&
             SetSecurityDescriptorDacl(&descriptor_, TRUE, list, FALSE) != 0 &&
             SetSecurityDescriptorControl(&descriptor_, SE_DACL_PROTECTED, SE_DACL_PROTECTED) != 0;
    attributes_ = {sizeof attributes_, &descriptor_, FALSE};
}

void copyRightsAndAttributes(const std::wstring& from, const std::wstring& to) {
    constexpr DWORD kSetByUsers =
        FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    const DWORD attributes = GetFileAttributesW(from.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & kSetByUsers) != 0)
        SetFileAttributesW(to.c_str(), attributes & kSetByUsers);
    DWORD size = 0;
    GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<char> rights(size);
    if (size != 0 &&
        GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) != 0) {
        SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, rights.data());
    }
}

}  // namespace vexa
