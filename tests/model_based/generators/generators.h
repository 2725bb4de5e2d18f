#pragma once
// Values for random operations, each made from any number: few ids, so that they meet again, and
// texts that are hard to write.

#include "tests/model_based/reference/reference_store.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kestrel::tests {

std::string generateId(std::uint32_t number);
std::string generateTitle(std::uint32_t number);
std::string generateType(std::uint32_t number);

/// What a user types to find a row.
std::string generateLetters(std::uint32_t number);

/// A path or a command; nothing for an item without one.
std::optional<std::string> generateText(std::uint32_t number);

ReferenceItem generateItem(std::uint32_t number);

/// A stored list of up to six items, in the program's own form or in another that means the same.
StoredValue generateList(std::uint32_t length, std::uint32_t number);

/// Stored bytes that are no list.
StoredValue generateInvalidList(std::uint32_t number);

} // namespace kestrel::tests
