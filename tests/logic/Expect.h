// What several logic tests need.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <system_error>

namespace bexlow {

/// Runs an action that must fail with a code, and gives the words of its failure.
template <class Action>
std::string FailureOf(std::errc code, Action action) {
  try {
    action();
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code(), std::make_error_code(code)) << error.what();
    return error.what();
  }
  ADD_FAILURE() << "did not fail";
  return {};
}

}  // namespace bexlow
