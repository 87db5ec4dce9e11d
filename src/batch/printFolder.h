#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// The name of the file for a PRINT key: the key and ".txt". All but letters, digits, "_", "-" and a "." that isn't the
/// first character is written as "%" and two hexadecimal digits for each byte, so different keys have different names,
/// and none leaves the folder or is hidden.
std::string printFileName(const std::string& key);

/// The folder that takes each PRINT text in a file of its own. Files in it that no key of this run names stay.
class cPrintFolder {
public:
    /// Makes the folder if need be, with those above it. @throws cFileError if it can't be written to.
    explicit cPrintFolder(const std::string& folderPath);
    /// Takes away again the folders made here that nothing was written to.
    ~cPrintFolder();
    cPrintFolder(const cPrintFolder&) = delete;
    cPrintFolder& operator=(const cPrintFolder&) = delete;

    /// Writes the texts, each file whole or not at all; the folder stays. @throws cFileError at the first that can't be
    /// written.
    void write(const std::map<std::string, std::string>& texts);

private:
    int makeLevels();
    void takeBack();

    std::filesystem::path path;
    std::vector<std::filesystem::path> made;  // outer ones first
};
