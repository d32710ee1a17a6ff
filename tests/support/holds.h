#pragma once
// Whether a text holds a part, as a check whose failure shows the whole text
// (a log, a box's message) rather than only that the part was not found.

#include <gtest/gtest.h>

#include <string>

namespace velmora::testing {

inline ::testing::AssertionResult Holds(const std::string& text, const std::string& part) {
    if (text.find(part) == std::string::npos)
        return ::testing::AssertionFailure() << "\"" << part << "\" is not in:\n" << text;
    return ::testing::AssertionSuccess() << "\"" << part << "\" is in:\n" << text;
}

}  // namespace velmora::testing
