#include "Platform/Linux/HttpDate.h"

#include <array>

namespace trellisport::platform {

namespace {

/// Reads a text from left to right. After the first mismatch nothing matches any more.
class Scanner {
public:
    explicit Scanner(std::string_view text)
        : m_rest(text)
    {
    }

    void expect(std::string_view literal)
    {
        if (m_rest.starts_with(literal)) {
            m_rest.remove_prefix(literal.size());
        } else {
            m_isValid = false;
        }
    }

    int number(std::size_t digits)
    {
        int value = 0;
        for (std::size_t i = 0; i < digits; ++i) {
            const char digit = next();
            m_isValid = m_isValid && digit >= '0' && digit <= '9';
            value = value * 10 + (digit - '0');
        }
        return m_isValid ? value : 0;
    }

    /// Gives the index of the name that stands here, from 1; 0 for none.
    template <std::size_t count>
    unsigned name(const std::array<std::string_view, count> &names)
    {
        for (unsigned i = 0; i < count; ++i) {
            if (m_rest.starts_with(names[i])) {
                m_rest.remove_prefix(names[i].size());
                return i + 1;
            }
        }
        m_isValid = false;
        return 0;
    }

    [[nodiscard]] bool startsWith(char c) const { return m_rest.starts_with(c); }
    [[nodiscard]] bool isDone() const { return m_isValid && m_rest.empty(); }

private:
    char next()
    {
        if (m_rest.empty()) {
            m_isValid = false;
            return '0';
        }
        const char c = m_rest.front();
        m_rest.remove_prefix(1);
        return c;
    }

    std::string_view m_rest;
    bool m_isValid = true;
};

constexpr std::array<std::string_view, 7> shortDays{"Mon", "Tue", "Wed", "Thu",
                                                    "Fri", "Sat", "Sun"};
constexpr std::array<std::string_view, 7> longDays{"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                   "Friday", "Saturday", "Sunday"};
constexpr std::array<std::string_view, 12> monthNames{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

struct Fields {
    int year = 0;
    unsigned month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

void readTime(Scanner &scanner, Fields &fields)
{
    fields.hour = scanner.number(2);
    scanner.expect(":");
    fields.minute = scanner.number(2);
    scanner.expect(":");
    fields.second = scanner.number(2);
}

/// "Sun, 06 Nov 1994 08:49:37 GMT"
bool readCurrentLayout(Scanner scanner, Fields &fields)
{
    scanner.name(shortDays);
    scanner.expect(", ");
    fields.day = scanner.number(2);
    scanner.expect(" ");
    fields.month = scanner.name(monthNames);
    scanner.expect(" ");
    fields.year = scanner.number(4);
    scanner.expect(" ");
    readTime(scanner, fields);
    scanner.expect(" GMT");
    return scanner.isDone();
}

/// "Sunday, 06-Nov-94 08:49:37 GMT"
bool readTwoDigitYearLayout(Scanner scanner, Fields &fields)
{
    scanner.name(longDays);
    scanner.expect(", ");
    fields.day = scanner.number(2);
    scanner.expect("-");
    fields.month = scanner.name(monthNames);
    scanner.expect("-");
    const int year = scanner.number(2);
    fields.year = year < 70 ? 2000 + year : 1900 + year;
    scanner.expect(" ");
    readTime(scanner, fields);
    scanner.expect(" GMT");
    return scanner.isDone();
}

/// "Sun Nov  6 08:49:37 1994"
bool readYearLastLayout(Scanner scanner, Fields &fields)
{
    scanner.name(shortDays);
    scanner.expect(" ");
    fields.month = scanner.name(monthNames);
    scanner.expect(" ");
    if (scanner.startsWith(' ')) {
        scanner.expect(" ");
        fields.day = scanner.number(1);
    } else {
        fields.day = scanner.number(2);
    }
    scanner.expect(" ");
    readTime(scanner, fields);
    scanner.expect(" ");
    fields.year = scanner.number(4);
    return scanner.isDone();
}

} // namespace

std::optional<std::chrono::sys_seconds> parseHttpDate(std::string_view text)
{
    using namespace std::chrono;
    const Scanner scanner(text);
    Fields fields;
    if (!readCurrentLayout(scanner, fields) && !readTwoDigitYearLayout(scanner, fields) &&
        !readYearLastLayout(scanner, fields)) {
        return {};
    }
    const year_month_day date(year(fields.year), month(fields.month),
                              day(static_cast<unsigned>(fields.day)));
    if (!date.ok() || fields.hour > 23 || fields.minute > 59 || fields.second > 60) {
        return {};
    }
    return sys_days(date) + hours(fields.hour) + minutes(fields.minute) + seconds(fields.second);
}

} // namespace trellisport::platform
