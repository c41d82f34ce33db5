#include "vynhost/CSVReader.h"

#include "vynhost/NumberText.h"

#include <algorithm>
#include <stdexcept>

namespace vynhost {

bool CSVReader::Next() {
    while (SkipLine()) {
    }
    mFields.clear();
    mRecordLine = mLine;
    if (IsAtEnd())
        return false;
    constexpr std::size_t kMostFields = 1000;
    for (bool more = true; more; mPlace += more ? 1 : 0) {
        if (mFields.size() == kMostFields)
            Fail("there are more than " + std::to_string(kMostFields) + " fields");
        mFields.push_back(ReadField());
        more = IsAt(',');
    }
    return true;
}

// Passes over the rest of a line when it is empty or a comment.
bool CSVReader::SkipLine() {
    std::size_t const end = std::min(mText.find('\n', mPlace), mText.size());
    std::string_view const line = mText.substr(std::min(mPlace, end), end - mPlace);
    std::string_view const content = TrimBlanks(line);
    if (IsAtEnd() || (!content.empty() && !content.starts_with('#')))
        return false;
    mLine += end < mText.size() ? 1 : 0;
    mPlace = std::min(end + 1, mText.size());
    return true;
}

void CSVReader::SkipBlanks() {
    while (IsAt(' ') || IsAt('\t') || IsAt('\r'))
        ++mPlace;
}

std::string CSVReader::ReadField() {
    SkipBlanks();
    if (IsAt('"'))
        return ReadQuoted();
    std::size_t const end = std::min(mText.find_first_of(",\n", mPlace), mText.size());
    std::string_view const field = mText.substr(mPlace, end - mPlace);
    mPlace = end;
    return std::string(TrimBlanks(field));
}

std::string CSVReader::ReadQuoted() {
    std::string field;
    for (bool inside = true; inside;) {
        std::size_t const start = mPlace + 1;
        std::size_t const end = mText.find('"', start);
        if (end == std::string_view::npos)
            Fail("a quotation mark has no partner");
        std::string_view const part = mText.substr(start, end - start);
        mLine += std::ranges::count(part, '\n');
        field += part;
        mPlace = end + 1;
        inside = IsAt('"');
        if (inside)
            field += '"';
    }
    SkipBlanks();
    if (!IsAtEnd() && !IsAt(',') && !IsAt('\n'))
        Fail("something stands behind a closing quotation mark");
    return field;
}

void CSVReader::Fail(std::string const& reason) const {
    throw std::runtime_error("line " + std::to_string(mRecordLine) + ": " + reason);
}

} // namespace vynhost
