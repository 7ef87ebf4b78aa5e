#pragma once

#include "ServiceAccess/CodingErrors.h"
#include "ServiceAccess/Records.h"

#include <string>

namespace trellisport {

/// Reads a JSON document (RFC 8259, UTF-8, no byte order mark). T is a record, a std::vector of
/// records or a TextMap.
///
/// - A required field's key must be there with a value of the field's JSON type. An optional field
///   is absent when its key is missing or holds null; any other value of a wrong type fails.
/// - An integer field takes whole numbers written without fraction and exponent, within 64 bits; a
///   number field takes every number within double's range, rounded to the nearest double.
/// - Keys match byte for byte after unescaping; other keys are ignored. Of a repeated key the last
///   one counts, whatever the earlier ones hold.
/// - Half of a surrogate pair, escaped alone, reads as U+FFFD.
/// - The first field in table order that fails is the one reported.
///
/// body: given up to decoding. When its capacity leaves 64 bytes of room, it is read without a
/// copy. It is freed before the value is built, so that a large reply is not held three times.
/// Throws DecodingError. Time and memory grow in proportion to the document. Any thread.
template <typename T>
[[nodiscard]] T decode(std::string body);

/// Writes compact JSON: the fields in table order, absent ones left out, numbers such that they
/// read back as the same double. T as for decode. Throws EncodingError. Any thread.
template <typename T>
[[nodiscard]] std::string encode(const T &value);

} // namespace trellisport
