#include "DecodingSupport.h"

#include <ostream>
#include <vector>

namespace trellisport {
namespace {

using namespace std::string_literals;

struct JsonCase {
    const char *name;
    std::string json;
};

void PrintTo(const JsonCase &json, std::ostream *out)
{
    *out << json.name << ": " << testing::PrintToString(json.json.substr(0, 80));
}

std::string nested(char open, char close, std::size_t depth)
{
    return std::string(depth, open) + std::string(depth, close);
}

// What the standard calls JSON. Among it is what it leaves to the reader, with our decision: taken
// are numbers of any size, halves of surrogate pairs, repeated keys and any depth.
const std::vector<JsonCase> acceptedCases = {
    // Words and white space
    {"True", "true"},
    {"False", "false"},
    {"Null", "null"},
    {"SpaceAround", " \t\r\n null \t\r\n "},
    {"SpaceInside", "[ 1 ,\t2\r\n,{ \"a\" : [ ] } ]"},
    {"LineFeedAtEnd", "[]\n"},
    // Structures
    {"EmptyList", "[]"},
    {"EmptyObject", "{}"},
    {"ListOfAll", R"([null,true,false,1,-1.5,"x",[],{}])"},
    {"ObjectOfAll", R"({"a":null,"b":true,"c":0,"d":"","e":[],"f":{}})"},
    {"ListWithNullsOnly", "[null,null,null]"},
    {"EmptyKey", R"({"":0})"},
    {"KeyWithEscapes", R"({"\u0000\n\"":42})"},
    {"RepeatedKey", R"({"a":1,"a":2,"a":"3"})"},
    {"RepeatedKeyAndValue", R"({"a":1,"a":1})"},
    {"LongList", "[" + std::string(2000, '1') + "]"},
    {"ManyElements",
     [] {
         std::string json = "[0";
         for (int i = 0; i < 5000; ++i) {
             json += ",0";
         }
         return json + "]";
     }()},
    {"Nested100", nested('[', ']', 100)},
    {"Nested1023", nested('[', ']', 1023)},
    {"Nested1024", nested('[', ']', 1024)},
    {"Nested1025", nested('[', ']', 1025)},
    {"Nested100000", nested('[', ']', 100000)},
    {"NestedAroundRewrittenNumber", std::string(1024, '[') + "1e999" + std::string(1024, ']')},
    // Numbers
    {"Zero", "0"},
    {"MinusZero", "-0"},
    {"MinusZeroFraction", "-0.0"},
    {"One", "1"},
    {"MinusOne", "-1"},
    {"Fraction", "123.456789"},
    {"Exponent", "1e10"},
    {"CapitalExponent", "1E10"},
    {"PlusExponent", "1e+2"},
    {"MinusExponent", "1E-2"},
    {"ZeroExponent", "0e1"},
    {"ExponentWithLeadingZeros", "1e0005"},
    {"FractionAndExponent", "-12.5e-3"},
    {"LongFraction", "0." + std::string(1000, '3')},
    {"Int64Max", "9223372036854775807"},
    {"Int64MaxPlusOne", "9223372036854775808"},
    {"Int64Min", "-9223372036854775808"},
    {"Int64MinMinusOne", "-9223372036854775809"},
    {"Uint64Max", "18446744073709551615"},
    {"Uint64MaxPlusOne", "18446744073709551616"},
    {"ThirtyDigits", "-123456789012345678901234567890"},
    {"ThousandDigits", std::string(1000, '9')},
    {"MinusThousandDigits", "-" + std::string(1000, '9')},
    {"ThousandDigitsAndFraction", std::string(1000, '9') + ".5"},
    {"BeyondDouble", "1e309"},
    {"FarBeyondDouble", "-1e999999999999999999999"},
    {"BelowDouble", "1e-999999999999999999999"},
    {"BelowDoubleNegative", "-1.5E-400"},
    {"LongZeros", "0." + std::string(500, '0') + "1"},
    {"LongZerosAndExponent", "0." + std::string(500, '0') + "1e600"},
    // Texts
    {"EmptyText", R"("")"},
    {"AllEscapes", R"("\"\\\/\b\f\n\r\t\u0041")"},
    {"EscapedNul", R"("a\u0000b")"},
    {"EscapedControls", R"("\u0001\u001f\u007f")"},
    {"SurrogatePair", R"("\ud83d\ude80\uDBFF\uDFFF")"},
    {"EscapedNoncharacters", R"("\uffff\ufffe\ufdd0\ud83f\udffe")"},
    {"RawDelete", "\"\x7f\""},
    {"RawLineSeparators", "\"\u2028\u2029\""},
    {"RawByteOrderMarkInside", "\"\ufeff\""},
    {"RawLastCodePoint", "\"\xf4\x8f\xbf\xbf\""},
    {"RawNoncharacter", "\"\xef\xbf\xbf\""},
    {"RawOfEachLength", "\"a\u00e9\u20ac\U0001f680\""},
    {"TextLikeStructure", R"("[{,}]: \\\" //")"},
    {"BackslashesAtEnd", R"("\\\\")"},
    {"LoneHighSurrogate", R"("\ud800")"},
    {"LoneLowSurrogate", R"("\udfff")"},
    {"SwappedSurrogates", R"("\udc00\ud800")"},
    {"TwoHighSurrogates", R"("\ud800\ud800")"},
    {"HighSurrogateThenLetter", R"("\uD800a")"},
    {"HighSurrogateThenEscape", R"("\uDBFF\n")"},
    {"HighSurrogateThenOtherUnit", R"("\uD888\u1234")"},
    {"LoneSurrogateInKey", R"({"\ud800":1})"},
};

// What it does not.
const std::vector<JsonCase> refusedCases = {
    {"Nothing", ""},
    {"SpaceOnly", " \n"},
    {"ByteOrderMark", "\ufeff{}"},
    {"ByteOrderMarkOnly", "\ufeff"},
    {"Utf16", "\xff\xfe[\0]\0"s},
    {"NulAfter", "{}\0"s},
    {"NulBefore", "\0{}"s},
    {"NulOnly", "\0"s},
    {"NulInside", "[1\0,2]"s},
    {"FormFeed", "[\f]"},
    {"VerticalTab", "[\v]"},
    {"NoBreakSpace", "[\u00a0]"},
    {"WideSpace", "[\u3000]"},
    // Words
    {"TrueShort", "tru"},
    {"TrueLong", "truee"},
    {"TrueCapital", "True"},
    {"NullShort", "nul"},
    {"NullLong", "nulll"},
    {"TwoWords", "true false"},
    {"TwoWordsInList", "[true false]"},
    {"NotANumber", "NaN"},
    {"Infinity", "Infinity"},
    {"MinusInfinity", "-Infinity"},
    {"Undefined", "undefined"},
    {"BareWord", "abc"},
    {"Html", "<html></html>"},
    {"Star", "[*]"},
    // Structures
    {"OpenList", "["},
    {"OpenObject", "{"},
    {"CloseList", "]"},
    {"CloseObject", "}"},
    {"ListNotClosed", "[1,2"},
    {"ListNotClosedAfterComma", "[1,"},
    {"ObjectNotClosed", R"({"a":1)"},
    {"ObjectNotClosedAfterKey", R"({"a")"},
    {"ObjectNotClosedAfterColon", R"({"a":)"},
    {"ListClosedTwice", "[1]]"},
    {"ObjectClosedTwice", R"({"a":1}})"},
    {"ListClosedAsObject", "[1}"},
    {"ObjectClosedAsList", R"({"a":1])"},
    {"CommaAtEndOfList", "[1,]"},
    {"CommaAtStartOfList", "[,1]"},
    {"CommaAlone", "[,]"},
    {"TwoCommas", "[1,,2]"},
    {"NoComma", "[1 2]"},
    {"NoCommaTexts", R"(["a" "b"])"},
    {"ColonInList", R"(["a":1])"},
    {"CommaAtEndOfObject", R"({"a":1,})"},
    {"CommaAtStartOfObject", R"({,"a":1})"},
    {"TwoCommasInObject", R"({"a":1,,"b":2})"},
    {"NoCommaInObject", R"({"a":1 "b":2})"},
    {"NoColon", R"({"a" 1})"},
    {"TwoColons", R"({"a"::1})"},
    {"CommaForColon", R"({"a",1})"},
    {"NoValue", R"({"a":})"},
    {"KeyOnly", R"({"a"})"},
    {"NumberAsKey", "{1:1}"},
    {"HugeNumberAsKey", "{1e999:1}"},
    {"WordAsKey", "{null:1}"},
    {"BareKey", "{a:1}"},
    {"ListAsKey", "{[]:1}"},
    {"KeyWithSingleQuotes", "{'a':1}"},
    {"TwoDocuments", "{}{}"},
    {"TwoDocumentsApart", "[] []"},
    {"TextAfter", R"({} "a")"},
    {"CommentAfter", "{} // end"},
    {"CommentInside", "[/* one */1]"},
    {"CommentByHash", "{} # end"},
    {"CommaAfter", "[],"},
    {"OpenToDepth", std::string(100000, '[')},
    {"OpenObjectsToDepth",
     [] {
         std::string json;
         for (int i = 0; i < 50000; ++i) {
             json += R"({"":)";
         }
         return json;
     }()},
    {"ClosedOnceTooOftenAtDepth", nested('[', ']', 5000) + "]"},
    {"ClosedOtherwiseAtDepth", std::string(5000, '[') + std::string(5000, '}')},
    // Numbers
    {"PlusSign", "+1"},
    {"MinusAlone", "-"},
    {"MinusTwice", "--1"},
    {"MinusApart", "- 1"},
    {"LeadingZero", "01"},
    {"LeadingZeroNegative", "-012"},
    {"TwoZeros", "00"},
    {"PointAtStart", ".5"},
    {"PointAtEnd", "1."},
    {"MinusPoint", "-.5"},
    {"PointThenExponent", "1.e3"},
    {"TwoPoints", "1.2.3"},
    {"ExponentAlone", "1e"},
    {"ExponentSignAlone", "1e+"},
    {"ExponentTwice", "1e2e3"},
    {"ExponentTwoSigns", "1e+-2"},
    {"ExponentWithFraction", "1e1.5"},
    {"ExponentAtStart", "e5"},
    {"Hexadecimal", "0x1F"},
    {"HexadecimalDigits", "1F"},
    {"Underscore", "1_000"},
    {"DecimalComma", "[1,5.]"},
    {"SuffixLetter", "1a"},
    {"WideDigit", "\uff11"},
    {"HugeWithLeadingZero", "0" + std::string(400, '9')},
    {"HugeWithPointAtEnd", std::string(400, '9') + "."},
    {"HugeWithLetter", "[" + std::string(400, '9') + "x]"},
    {"HugeExponentWithLetter", "[1e999x]"},
    {"HugeExponentWithSign", "[1e999-]"},
    {"HugeBesideText", R"([1e999"a"])"},
    {"TextBesideHuge", R"(["a"1e999])"},
    {"HugeBesideList", "[1e999[]]"},
    {"HugeApart", "[1e999 1e999]"},
    {"HugeThenNothing", "[1e999,]"},
    {"HugeThenUnclosed", "[1e999"},
    {"HugeThenBadUtf8", "[1e999,\"\xff\"]"},
    {"HugeThenNul", "1e999\0"s},
    {"HugeThenBadEscape", R"([1e999,"\x"])"},
    // Texts
    {"QuoteAlone", "\""},
    {"NotClosed", "\"abc"},
    {"SingleQuotes", "'abc'"},
    {"EscapedEnd", R"("abc\")"},
    {"BackslashOutside", R"([\n])"},
    {"EscapeOutside", R"([\u0031])"},
    {"LoneSurrogateOutside", R"([\ud800])"},
    {"BadEscape", R"("\x41")"},
    {"EscapedQuoteSingle", R"("\'")"},
    {"EscapedLetter", R"("\a")"},
    {"EscapedDigit", R"("\0")"},
    {"EscapeCapitalU", R"("\U0041")"},
    {"EscapeNoDigits", R"("\u")"},
    {"EscapeOneDigit", R"("\u0")"},
    {"EscapeThreeDigits", R"("\u004")"},
    {"EscapeOtherDigits", R"("\u00G1")"},
    {"EscapeSpacedDigits", R"("\u 041")"},
    {"EscapeSignedDigits", R"("\u+041")"},
    {"SurrogateThenBadEscape", R"("\ud800\x")"},
    {"SurrogateThenShortEscape", R"("\ud800\u")"},
    {"SurrogateThenOneDigit", R"("\uD800\u1")"},
    {"SurrogateThenThreeDigits", R"("\uD800\udc0")"},
    {"SurrogateThenNotClosed", R"("\ud800)"},
    {"SurrogateThenControl", "\"\\ud800\n\""},
    {"SurrogateShort", R"("\ud80")"},
    {"RawLineFeed", "\"a\nb\""},
    {"RawTab", "\"a\tb\""},
    {"RawNul", "\"a\0b\""s},
    {"RawControl", "\"\x1f\""},
    {"EscapedRawLineFeed", "\"\\\n\""},
    {"EscapedRawLetter", "\"\\\u00e9\""},
    // Bytes that are not UTF-8
    {"LoneContinuation", "\"\x80\""},
    {"BadByte", "\"\xff\""},
    {"BadByteOutside", "[\xff]"},
    {"TwoByteCut", "\"\xc3\""},
    {"ThreeByteCut", "\"\xe2\x82\""},
    {"FourByteCut", "\"\xf0\x9f\x9a\""},
    {"CutAtEndOfDocument", "\"\xe2\x82"},
    {"TwoByteOverlong", "\"\xc0\xaf\""},
    {"ThreeByteOverlong", "\"\xe0\x80\xaf\""},
    {"FourByteOverlong", "\"\xf0\x80\x80\xaf\""},
    {"OverlongNul", "\"\xc0\x80\""},
    {"RawSurrogate", "\"\xed\xa0\x80\""},
    {"RawSurrogatePair", "\"\xed\xa0\xbd\xed\xba\x80\""},
    {"BeyondLastCodePoint", "\"\xf4\x90\x80\x80\""},
    {"FiveByte", "\"\xf8\x88\x80\x80\x80\""},
    {"BadByteInKey", "{\"\xff\":1}"},
    {"BadByteAfterEscape", "\"\\u00e9\xe9\""},
    {"Latin1", "[\"\xe9\"]"},
};

/// The document as the value of a key that no project has.
std::string inIgnoredKey(const std::string &json)
{
    return R"({"id":"p","ignored":)" + json + R"(,"title":"t"})";
}

std::string nameOf(const testing::TestParamInfo<JsonCase> &info)
{
    return info.param.name;
}

class AcceptedJson : public testing::TestWithParam<JsonCase> {};
class RefusedJson : public testing::TestWithParam<JsonCase> {};

TEST_P(AcceptedJson, AsDocument)
{
    EXPECT_TRUE(isJson(GetParam().json));
    EXPECT_TRUE(isJson("\n" + GetParam().json + "\r\n"));
}

TEST_P(AcceptedJson, InIgnoredKey)
{
    EXPECT_EQ(decode<Project>(inIgnoredKey(GetParam().json)), (Project{.id = "p", .title = "t"}));
}

TEST_P(AcceptedJson, InIgnoredKeyOfListElement)
{
    const std::string element = inIgnoredKey(GetParam().json);
    EXPECT_EQ(decode<std::vector<Project>>("[" + element + "," + element + "]").size(), 2U);
}

TEST_P(RefusedJson, AsDocument)
{
    EXPECT_FALSE(isJson(GetParam().json));
}

TEST_P(RefusedJson, InIgnoredKey)
{
    expectFailure<Project>(inIgnoredKey(GetParam().json), DecodingError::Kind::DamagedData, "");
}

TEST_P(RefusedJson, InIgnoredKeyOfListElement)
{
    EXPECT_FALSE(isJson("[" + inIgnoredKey(GetParam().json) + "]"));
}

TEST_P(RefusedJson, BesideWhatIsRewritten)
{
    EXPECT_FALSE(isJson(R"([1e999,"\ud800",99999999999999999999,)" + GetParam().json + "]"));
}

INSTANTIATE_TEST_SUITE_P(Json, AcceptedJson, testing::ValuesIn(acceptedCases), nameOf);
INSTANTIATE_TEST_SUITE_P(Json, RefusedJson, testing::ValuesIn(refusedCases), nameOf);

} // namespace
} // namespace trellisport
