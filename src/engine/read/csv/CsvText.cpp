#include "engine/read/csv/CsvText.h"

#include "engine/read/package/ReadError.h"

#include <QStringConverter>
#include <QStringDecoder>
#include <algorithm>
#include <array>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void failBinary()
{
    throw Fault{u"it is neither a workbook nor text"_s, ReadCause::NotAWorkbook};
}

bool isTextByte(unsigned char byte)
{
    return byte >= 0x20 || (byte >= '\t' && byte <= '\r');
}

/// Decodes piece by piece, so that a large text is not held in a third form in between.
std::string decoded(std::string_view bytes, QStringDecoder decoder)
{
    constexpr size_t piece = 1 << 20;
    std::string text;
    text.reserve(bytes.size());
    for (; !bytes.empty(); bytes.remove_prefix(std::min(piece, bytes.size()))) {
        const QString part = decoder(QByteArrayView(bytes.data(), qsizetype(std::min(piece, bytes.size()))));
        if (part.contains(QChar::Null))
            failBinary();
        text += part.toStdString();
    }
    return text;
}

/// Where Qt comes without the tables of Windows-1252, Latin 1 is next to it.
QStringDecoder windowsDecoder()
{
    QStringDecoder decoder("windows-1252");
    return decoder.isValid() ? std::move(decoder) : QStringDecoder(QStringConverter::Latin1);
}

} // namespace

std::string decodedText(std::string bytes)
{
    const std::string_view view(bytes);
    if (view.starts_with("\xff\xfe"))
        return decoded(view.substr(2), QStringDecoder(QStringConverter::Utf16LE));
    if (view.starts_with("\xfe\xff"))
        return decoded(view.substr(2), QStringDecoder(QStringConverter::Utf16BE));
    if (!std::all_of(bytes.begin(), bytes.end(),
                     [](char byte) { return isTextByte(static_cast<unsigned char>(byte)); }))
        failBinary();
    if (view.starts_with("\xef\xbb\xbf"))
        bytes.erase(0, 3);
    if (QByteArrayView(bytes.data(), qsizetype(bytes.size())).isValidUtf8())
        return bytes;
    return decoded(bytes, windowsDecoder());
}

char detectSeparator(std::string_view utf8)
{
    constexpr std::string_view separators = ",;\t|";
    constexpr size_t looked = 20000;
    std::array<size_t, separators.size()> counts{};
    size_t characters = 0;
    for (size_t at = 0; at < utf8.size() && characters < looked; ++at) {
        const size_t closing = utf8[at] == '"' ? utf8.find('"', at + 1) : std::string_view::npos;
        if (closing != std::string_view::npos) {
            characters += closing - at;
            at = closing;
        } else if (const size_t which = separators.find(utf8[at]); which != std::string_view::npos) {
            ++counts[which];
        }
        characters += (static_cast<unsigned char>(utf8[at]) & 0xc0) != 0x80;
    }
    return separators[static_cast<size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin())];
}

bool CsvFields::nextLine()
{
    std::string_view passed;
    while (m_lineOpen && nextField(passed))
        ;
    m_lineOpen = !m_rest.empty();
    return m_lineOpen;
}

bool CsvFields::nextField(std::string_view& field)
{
    if (!m_lineOpen)
        return false;
    if (m_rest.starts_with('"') && takeQuoted(field))
        return true;
    const char ends[] = {m_separator, '\n', '\r'};
    const size_t end = std::min(m_rest.find_first_of(std::string_view(ends, 3)), m_rest.size());
    field = m_rest.substr(0, end);
    m_rest.remove_prefix(end);
    endField();
    return true;
}

/// False, with nothing taken, where the quote is not closed in front of a separator or line end: it is a letter then.
bool CsvFields::takeQuoted(std::string_view& field)
{
    m_buffer.clear();
    size_t at = 1;
    while (true) {
        const size_t quote = m_rest.find('"', at);
        if (quote == std::string_view::npos)
            return false;
        appendText(m_rest.substr(at, quote - at));
        at = quote + 1;
        if (at == m_rest.size() || m_rest[at] == m_separator || m_rest[at] == '\n' || m_rest[at] == '\r')
            break;
        if (m_rest[at] != '"')
            return false;
        m_buffer += '"';
        ++at;
    }
    field = m_buffer;
    m_rest.remove_prefix(at);
    endField();
    return true;
}

/// Line ends within a field are those of the file; in a cell they are all the same.
void CsvFields::appendText(std::string_view text)
{
    while (true) {
        const size_t end = text.find('\r');
        m_buffer.append(text.substr(0, end));
        if (end == std::string_view::npos)
            return;
        m_buffer += '\n';
        text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
    }
}

void CsvFields::endField()
{
    if (m_rest.empty()) {
        m_lineOpen = false;
    } else if (m_rest.front() == m_separator) {
        m_rest.remove_prefix(1);
        // A separator at the very end still opens a field, an empty one, which nobody needs.
        m_lineOpen = !m_rest.empty();
    } else {
        m_rest.remove_prefix(m_rest.starts_with("\r\n") ? 2 : 1);
        m_lineOpen = false;
    }
}

} // namespace lumivane::engine
