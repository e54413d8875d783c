// What several tests need.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <optional>
#include <system_error>

namespace bexlow {

/// The failure of an action; without a code and words if it did not fail.
struct Failure {
  int code = 0;
  std::string words;
};
inline Failure FailureOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::system_error& error) {
    return {error.code().value(), error.what()};
  }
  return {};
}

/// Runs an action that must fail with a code, and gives the words of its failure.
inline std::string FailureOf(std::errc code, const std::function<void()>& action) {
  const auto failure = FailureOf(action);
  EXPECT_EQ(failure.code, static_cast<int>(code)) << failure.words;
  return failure.words;
}

}  // namespace bexlow
