#include "Platform/Linux/IcuFoldTable.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

namespace trellisport::platform {

namespace {

const icu::Normalizer2 &decomposing()
{
    UErrorCode status = U_ZERO_ERROR;
    return *icu::Normalizer2::getNFDInstance(status); // part of the library itself, always there
}

bool alwaysStandsAlone(UChar32 codePoint)
{
    switch (u_getIntPropertyValue(codePoint, UCHAR_GRAPHEME_CLUSTER_BREAK)) {
    case U_GCB_OTHER:
    case U_GCB_CONTROL:
    case U_GCB_LV:
    case U_GCB_LVT:
        return true;
    default:
        return false;
    }
}

} // namespace

IcuFoldTable::IcuFoldTable(bool turkic)
    : m_turkic(turkic)
{
}

IcuFoldTable::~IcuFoldTable()
{
    for (const auto &page : m_pages) {
        delete page.load(std::memory_order_acquire);
    }
}

const IcuFoldTable::Page &IcuFoldTable::makePage(std::size_t index) const
{
    auto page = std::make_unique<Page>();
    for (std::size_t i = 0; i < pageSize; ++i) {
        (*page)[i] = fold(static_cast<UChar32>(index * pageSize + i));
    }
    // When two threads make the same page, the first one's stays.
    const Page *present = nullptr;
    if (m_pages[index].compare_exchange_strong(present, page.get(), std::memory_order_acq_rel)) {
        present = page.release();
    }
    return *present;
}

IcuFoldTable::Entry IcuFoldTable::fold(UChar32 codePoint) const
{
    const icu::Normalizer2 &nfd = decomposing();
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString folded(codePoint);
    if (u_hasBinaryProperty(codePoint, UCHAR_CHANGES_WHEN_CASEFOLDED) ||
        nfd.getDecomposition(codePoint, folded)) {
        // Decomposed, the dotted capital would be a dotless one with a dot.
        const bool isDottedCapital = m_turkic && codePoint == 0x130;
        folded = isDottedCapital ? icu::UnicodeString(codePoint)
                                 : nfd.normalize(icu::UnicodeString(codePoint), status);
        folded.foldCase(m_turkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT);
        folded = nfd.normalize(folded, status);
    }
    Entry entry;
    entry.standsAlone = alwaysStandsAlone(codePoint);
    icu::CheckedArrayByteSink sink(entry.bytes.data(), Entry::capacity);
    folded.toUTF8(sink);
    entry.size = static_cast<std::uint8_t>(sink.NumberOfBytesWritten());
    entry.isPlain =
        entry.standsAlone && folded.countChar32() == 1 && entry.size == U8_LENGTH(codePoint);
    if (!folded.isEmpty()) {
        entry.firstClass = u_getCombiningClass(folded.char32At(0));
        entry.lastClass = u_getCombiningClass(folded.char32At(folded.length() - 1));
    }
    return entry;
}

} // namespace trellisport::platform
