#include "batch/fileError.h"

#include <system_error>

cFileError systemFileError(const std::string& action, const std::string& name, int errorNumber) {
    return {"can't " + action + ' ' + name + ": " + std::generic_category().message(errorNumber)};
}
