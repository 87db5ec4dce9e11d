#pragma once

#include <string>

/// A file of the user that can't be read or written. Ends the program, with a status of its own, where it is caught.
struct cFileError {
    std::string message;  ///< names the file and the system's reason
};

/// "can't ACTION NAME: REASON", with the reason that `errorNumber` stands for.
cFileError systemFileError(const std::string& action, const std::string& name, int errorNumber);
