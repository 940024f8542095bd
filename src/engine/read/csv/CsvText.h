#pragma once

#include <string>
#include <string_view>

namespace lumivane::engine {

/// The bytes of a text file as UTF-8 without a byte order mark: UTF-8 or UTF-16 where they say so or fit, otherwise
/// Windows-1252. Throws Fault for bytes that no text has.
std::string decodedText(std::string bytes);

/// The likeliest of the separators `,` `;` tab and `|`: the one found most often outside quotes in the first 20,000
/// characters.
char detectSeparator(std::string_view utf8);

/// Takes a text with separators apart. Quotes may hold separators, line breaks and doubled quotes.
class CsvFields
{
public:
    CsvFields(std::string_view utf8, char separator) : m_rest(utf8), m_separator(separator) {}

    /// Goes to the next line; false when there is none. Fields that were not taken are passed over.
    bool nextLine();
    /// Takes the line's next field; false when it has no more. The view is valid until the next call.
    bool nextField(std::string_view& field);

private:
    bool takeQuoted(std::string_view& field);
    void appendText(std::string_view text);
    void endField();

    std::string_view m_rest;
    char m_separator;
    bool m_lineOpen = false;
    std::string m_buffer;
};

} // namespace lumivane::engine
