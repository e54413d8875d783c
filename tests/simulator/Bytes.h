// Bytes as the texts that a protocol record shows: "64 01 2C".
#pragma once
#include <algorithm>
#include <gtest/gtest.h>
#include <span>

inline std::vector<std::uint8_t> FromHex(const std::string& text) {
  std::vector<std::uint8_t> bytes;
  std::istringstream words(text);
  for (unsigned byte = 0; words >> std::hex >> byte;) bytes.push_back(static_cast<std::uint8_t>(byte));
  return bytes;
}

inline std::string ToHex(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const unsigned byte : bytes) {
    char word[4];
    std::snprintf(word, sizeof word, "%02X", byte);
    if (!text.empty()) text += ' ';
    text += word;
  }
  return text;
}
