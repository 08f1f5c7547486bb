#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Disk.h"
#include "platform/UniqueHandle_win32.h"

namespace tobbin {

// An open file of the computer's. Opened by SystemDisk.
class SystemFile : public File {
 public:
    explicit SystemFile(UniqueFile handle) : m_handle(std::move(handle)) {}

    DiskStatus Read(std::uint64_t offset, std::size_t count, std::string& bytes) override;
    DiskStatus Write(std::uint64_t offset, std::string_view bytes) override;
    DiskStatus Size(std::uint64_t& bytes) override;
    DiskStatus Flush() override;
    DiskStatus Close() override;

 private:
    UniqueFile m_handle;
};

}  // namespace tobbin
