#pragma once

#include <string>
#include <vector>

/// The lines of code to be compiled ahead of the Global Code: the statements of each text, then each single statement.
/// Every line holds one whole statement with its ";", so that no text can run into the next or leave some of it behind.
/// @param codeTexts contents of files, in the form of Global Code.
/// @param statements single ones, with a ";" at the end or without.
std::vector<std::string> leadingLines(const std::vector<std::string>& codeTexts,
                                      const std::vector<std::string>& statements);
