#include "platform/DiskError_win32.h"

namespace tobbin {
namespace {

// The compiler's headers lack these two.
constexpr DWORD kNoSuchDevice = 433;
constexpr DWORD kDiskQuotaExceeded = 1295;

DiskError Kind(DWORD systemCode) {
    switch (systemCode) {
        case ERROR_SUCCESS:
            return DiskError::None;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_DRIVE:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_DIRECTORY:
            return DiskError::NotFound;
        case ERROR_ACCESS_DENIED:
        case ERROR_NETWORK_ACCESS_DENIED:
        case ERROR_PRIVILEGE_NOT_HELD:
        case ERROR_CANNOT_MAKE:
        case ERROR_FILE_READ_ONLY:
            return DiskError::AccessDenied;
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_USER_MAPPED_FILE:
        case ERROR_DELETE_PENDING:
            return DiskError::SharingViolation;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
        case kDiskQuotaExceeded:
            return DiskError::DiskFull;
        case ERROR_WRITE_PROTECT:
            return DiskError::WriteProtected;
        case ERROR_NOT_READY:
        case ERROR_NO_MEDIA_IN_DRIVE:
        case ERROR_UNRECOGNIZED_VOLUME:
        case ERROR_DEVICE_NOT_CONNECTED:
        case ERROR_DEVICE_REMOVED:
        case kNoSuchDevice:
        case ERROR_DEV_NOT_EXIST:
        case ERROR_REM_NOT_LIST:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_NETNAME_DELETED:
        case ERROR_UNEXP_NET_ERR:
        case ERROR_NETWORK_UNREACHABLE:
        case ERROR_NOT_CONNECTED:
        case ERROR_SEM_TIMEOUT:
            return DiskError::NotReady;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return DiskError::AlreadyExists;
        default:
            return DiskError::Other;
    }
}

}  // namespace

DiskStatus StatusOf(DWORD systemCode) {
    return DiskStatus(Kind(systemCode), systemCode);
}

DiskStatus LastStatus() {
    return StatusOf(GetLastError());
}

}  // namespace tobbin
