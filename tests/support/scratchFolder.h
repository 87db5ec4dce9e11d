#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>

/// A folder of the test's own, gone at its end with all that is in it.
class cScratchFolder {
public:
    cScratchFolder() {
        std::string name = std::filesystem::temp_directory_path() / "timbersim-test-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) ADD_FAILURE() << "no scratch folder could be made";
        path = name;
    }
    ~cScratchFolder() { std::filesystem::remove_all(path); }
    cScratchFolder(const cScratchFolder&) = delete;
    cScratchFolder& operator=(const cScratchFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return path / name; }

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(path / name, std::ios::binary) << text;
    }
    std::string read(const std::string& name) const {
        std::ifstream file(path / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// The names of all that is in the folder, hidden files included.
    std::set<std::string> names() const {
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(path)) found.insert(entry.path().filename());
        return found;
    }

private:
    std::filesystem::path path;
};
