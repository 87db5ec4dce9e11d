#pragma once

#include <string_view>

/// The properties of elements by the words that model files have for them. Those of links stand with their rules
/// (flow/linkRules.h).
namespace propertyWord {

inline constexpr std::string_view duration = "DURATION";
inline constexpr std::string_view priority = "PRIORITY";
inline constexpr std::string_view semaphore = "SEMAPHORE";
inline constexpr std::string_view consolidateWhen = "CONSOLIDATEWHEN";
inline constexpr std::string_view initialContent = "TBINITIALCONTENT";

}  // namespace propertyWord
