#include "batch/printFolder.h"

#include "batch/fileError.h"
#include "batch/outputFile.h"

#include <algorithm>
#include <cerrno>
#include <ranges>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::string_view plainCharacters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-";
constexpr mode_t newFolderMode = 0777;  // less what the user's mask takes away

std::string percentCode(char character) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(character);
    return {'%', digits[byte / digits.size()], digits[byte % digits.size()]};
}

/// @return 0, or the error number of what keeps `folder` from taking files.
int troubleWith(const std::filesystem::path& folder) {
    struct stat found {};
    if (stat(folder.c_str(), &found) != 0) return errno;
    if (!S_ISDIR(found.st_mode)) return ENOTDIR;
    return access(folder.c_str(), W_OK | X_OK) == 0 ? 0 : errno;
}

}  // namespace

std::string printFileName(const std::string& key) {
    std::string name;
    for (const char character : key) {
        const bool isInnerPoint = character == '.' && !name.empty();
        if (isInnerPoint || plainCharacters.find(character) != std::string_view::npos)
            name += character;
        else
            name += percentCode(character);
    }
    return name + ".txt";
}

cPrintFolder::cPrintFolder(const std::string& folderPath) : path(folderPath) {
    const int makingFailed = makeLevels();
    const int trouble = troubleWith(path);
    if (trouble == 0) return;

    takeBack();
    throw systemFileError("write to folder", folderPath,
                          trouble == ENOENT && makingFailed != 0 ? makingFailed : trouble);
}

cPrintFolder::~cPrintFolder() { takeBack(); }

/// @return the error number of the last level that is neither there nor could be made, or 0.
int cPrintFolder::makeLevels() {
    int makingFailed = 0;
    std::filesystem::path level;
    for (const std::filesystem::path& step : path) {
        level /= step;
        if (mkdir(level.c_str(), newFolderMode) == 0)
            made.push_back(level);
        else if (errno != EEXIST)
            makingFailed = errno;
    }
    return makingFailed;
}

void cPrintFolder::takeBack() {
    for (const std::filesystem::path& folder : made | std::views::reverse) rmdir(folder.c_str());
}

void cPrintFolder::write(const std::map<std::string, std::string>& texts) {
    for (const auto& [key, text] : texts) {
        cOutputFile file(path / printFileName(key));
        file.write(text);
        file.commit();
    }
    made.clear();
}
