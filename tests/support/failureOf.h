#pragma once

#include "language/exception.h"

#include <gtest/gtest.h>

/// The cException that `action` throws. Fails the test, and gives an empty one, if it throws none.
template <typename cAction>
cException failureOf(cAction action) {
    try {
        action();
    } catch (const cException& failure) {
        return failure;
    }
    ADD_FAILURE() << "no cException was thrown";
    return {};
}
