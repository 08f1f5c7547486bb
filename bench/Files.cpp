#include "Files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "util/Check.h"

namespace tobbin {
namespace {

std::string BytesOf(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY);
    CHECK(file >= 0);
    std::string bytes(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
    CHECK(pread(file, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    close(file);
    return bytes;
}

}  // namespace

TemporaryFolder::TemporaryFolder()
    : m_path(std::filesystem::temp_directory_path() / "tobbin-bench-XXXXXX") {
    CHECK(mkdtemp(m_path.data()) != nullptr);
}

TemporaryFolder::~TemporaryFolder() {
    std::filesystem::remove_all(m_path);
}

Time ReadPlainly(const std::string& path) {
    return TimeOf([&] { CHECK(!BytesOf(path).empty()); });
}

Time WritePlainly(const std::string& path) {
    const std::string bytes = BytesOf(path);
    return TimeOf([&] {
        const int file = open((path + ".plain").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        CHECK(write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
        CHECK(fsync(file) == 0);
        close(file);
    });
}

}  // namespace tobbin
