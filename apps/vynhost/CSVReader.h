#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vynhost {

/// Takes a text of comma-separated values apart, a record at a time. A field in quotation marks may hold commas, line
/// breaks and doubled quotation marks; blanks around fields don't count. Lines without anything on them and lines that
/// begin with "#", blanks aside, are passed over. Lines end with a line feed, with or without a carriage return in
/// front.
class CSVReader {
public:
    /// @param text  must outlive the object
    /// [any-thread]
    explicit CSVReader(std::string_view text) : mText(text) {}

    /// Goes to the next record; false when there is none. Throws std::runtime_error, with the line, for quotation
    /// marks that don't pair and for more fields than any table has.
    /// [any-thread]
    bool Next();

    /// The fields of the record, at least one.
    /// [any-thread]
    std::vector<std::string> const& GetFields() const noexcept { return mFields; }

    /// The line on which the record begins, counted from 1.
    /// [any-thread]
    std::int64_t GetLine() const noexcept { return mRecordLine; }

private:
    bool IsAtEnd() const noexcept { return mPlace >= mText.size(); }
    bool IsAt(char character) const noexcept { return !IsAtEnd() && mText[mPlace] == character; }
    bool SkipLine();
    void SkipBlanks();
    std::string ReadField();
    std::string ReadQuoted();
    [[noreturn]] void Fail(std::string const& reason) const;

    std::string_view mText;
    std::size_t mPlace = 0;
    std::int64_t mLine = 1;
    std::int64_t mRecordLine = 0;
    std::vector<std::string> mFields;
};

} // namespace vynhost
