// What the stand-in says that it sent, and what the program must make of it.
#pragma once

#include <string>
#include <vector>

namespace bexlow::tour {

std::vector<std::string> LinesOf(const std::string& text);
/// The whole numbers in a line.
std::vector<int> Numbers(const std::string& line);
/// Degrees of a sampled word, one decimal at most, as files and datagrams hold them.
std::string AngleOfWord(int word, double fullScale);

}  // namespace bexlow::tour
