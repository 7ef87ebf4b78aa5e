#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace trellisport {

/// A reply that is not what was promised.
class DecodingError : public std::exception {
public:
    enum class Kind : std::uint8_t {
        KeyMissing,   ///< a required key is not there
        ValueMissing, ///< null where a value is required
        TypeMismatch, ///< a value of another JSON type, or a number that the field cannot hold
        DamagedData,  ///< not a JSON document
    };

    DecodingError(Kind kind, std::string path, std::string description);

    [[nodiscard]] Kind kind() const noexcept { return m_kind; }
    /// Where in the document, e.g. "[3].title" or "status_counts.awarded"; empty for the document
    /// itself. For reading only: keys stand in it unescaped, and long ones are cut.
    [[nodiscard]] const std::string &path() const noexcept { return m_path; }
    /// One sentence for a person, UTF-8.
    [[nodiscard]] const char *what() const noexcept override { return m_description.c_str(); }

private:
    Kind m_kind;
    std::string m_path;
    std::string m_description;
};

/// A value that JSON cannot carry.
class EncodingError : public std::exception {
public:
    enum class Kind : std::uint8_t {
        InvalidText,    ///< not UTF-8
        NumberNotFinite ///< infinite, or not a number
    };

    EncodingError(Kind kind, std::string description);

    [[nodiscard]] Kind kind() const noexcept { return m_kind; }
    /// One sentence for a person.
    [[nodiscard]] const char *what() const noexcept override { return m_description.c_str(); }

private:
    Kind m_kind;
    std::string m_description;
};

} // namespace trellisport
