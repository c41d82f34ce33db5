#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace vyntest {

/// All bytes of a file; none when it can't be read.
/// [any-thread]
inline std::string ReadText(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// An empty folder of its own in the system's folder for temporary files; gone, with all that is in it, when the object
/// goes. Owned by the test that makes it.
/// [any-thread]
class TemporaryFolder {
public:
    /// Throws when no folder can be made.
    TemporaryFolder() {
        std::random_device random;
        for (int attempt = 0; attempt < 100; ++attempt) {
            mPath = std::filesystem::temp_directory_path() / ("vyntest-" + std::to_string(random()));
            if (std::filesystem::create_directory(mPath))
                return;
        }
        throw std::runtime_error("no temporary folder to be had");
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;

    /// Absolute.
    std::filesystem::path const& Path() const noexcept { return mPath; }

    /// The path of `name` in the folder, as the library takes paths.
    std::u16string Path16(std::string_view name = {}) const {
        return (name.empty() ? mPath : mPath / name).u16string();
    }

    /// What is in the folder, and not below.
    std::ptrdiff_t CountFiles() const { return std::distance(std::filesystem::directory_iterator(mPath), {}); }

    void AddFile(std::string_view name, std::string_view content = {}) const {
        std::ofstream(mPath / name, std::ios::binary) << content;
    }
    void AddFolder(std::string_view name) const { std::filesystem::create_directories(mPath / name); }
    void AddLink(std::string_view name, std::filesystem::path const& target) const {
        std::filesystem::create_symlink(target, mPath / name);
    }

private:
    std::filesystem::path mPath;
};

} // namespace vyntest
