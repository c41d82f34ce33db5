#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

/// A fresh folder of one test's own, which goes with everything in it when the object does.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "vyn-test-XXXXXX").string();
        if (char const* const made = mkdtemp(pattern.data()))
            mPath = made;
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }

    std::filesystem::path const& Path() const { return mPath; }

    /// The path of `name` in the folder, as the library takes paths.
    std::u16string Path16(std::string_view name = {}) const {
        return (name.empty() ? mPath : mPath / name).u16string();
    }

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
