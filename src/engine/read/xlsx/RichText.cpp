#include "engine/read/xlsx/RichText.h"

#include "engine/read/RowBuilder.h"
#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/ReadError.h"
#include "engine/read/xlsx/StyleReader.h"

#include <QStringView>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

/// Changes of font in one text, far more than anybody sets by hand. Each costs when the text is laid out.
constexpr size_t maxRuns = 1000;

FontStyle readRunFont(XmlScanner& xml, const Palette& palette)
{
    FontStyle font;
    const size_t outside = xml.depth() - 1;
    while (true) {
        const XmlScanner::Token token = xml.next();
        if (token == XmlScanner::Token::End && xml.depth() == outside)
            return font;
        if (token != XmlScanner::Token::Start)
            continue;
        const std::string_view value = xml.attribute("val");
        switch (xml.name()) {
        case nameKey("rFont"):
            font.family = textFrom(value);
            break;
        case nameKey("sz"):
            if (const double points = numberFrom(value).value_or(0); points >= 1 && points <= 409)
                font.points = points;
            break;
        case nameKey("b"):
            font.bold = flagFrom(value, true);
            break;
        case nameKey("i"):
            font.italic = flagFrom(value, true);
            break;
        case nameKey("strike"):
            font.strikeOut = flagFrom(value, true);
            break;
        case nameKey("u"):
            font.underline = underlineFrom(value);
            break;
        case nameKey("vertAlign"):
            font.script = scriptFrom(value);
            break;
        case nameKey("color"):
            font.color = palette
                             .color(xml.attribute("rgb"), xml.attribute("theme"), xml.attribute("indexed"),
                                    xml.attribute("tint"))
                             .value_or(font.color);
            break;
        }
    }
}

int utf16Length(std::string_view utf8)
{
    int units = 0;
    for (const char byte : utf8) {
        const auto value = static_cast<unsigned char>(byte);
        units += (value & 0xc0) != 0x80;
        units += value >= 0xf0;
    }
    return units;
}

/// A text that is put together piece by piece; no piece may cost more the longer the text is.
class TextPieces
{
public:
    TextPieces(XmlScanner& xml, const Palette& palette, std::string& text)
        : m_xml(xml), m_palette(palette), m_text(text)
    {
        m_text.clear();
    }

    /// Right after the Start of a plain piece.
    void readPlain()
    {
        if (m_text.size() > 3 * maxCellText) // a unit of UTF-16 takes at most three bytes
            return m_xml.skip();
        std::string piece;
        std::string& to = m_text.empty() ? m_text : piece;
        m_xml.appendText(to);
        resolveEscapes(to);
        m_text += piece;
    }

    /// Right after the Start of a run: its text, and its font as one more of the runs.
    void readRun()
    {
        TextRun run;
        run.start = length();
        run.cellFont = true;
        const size_t outside = m_xml.depth() - 1;
        const size_t before = m_text.size();
        while (true) {
            const XmlScanner::Token token = m_xml.next();
            if (token == XmlScanner::Token::End && m_xml.depth() == outside)
                break;
            if (token != XmlScanner::Token::Start)
                continue;
            if (m_xml.name() == nameKey("t")) {
                readPlain();
            } else if (m_xml.name() == nameKey("rPr")) {
                run.font = readRunFont(m_xml, m_palette);
                run.cellFont = false;
            } else {
                m_xml.skip();
            }
        }
        // Behind the last run that is kept, its font goes on.
        if (m_text.size() == before || run.start >= static_cast<int>(maxCellText) || m_runs.size() >= maxRuns)
            return;
        m_styled = m_styled || !run.cellFont;
        m_runs.push_back(std::move(run));
    }

    bool styled() const { return m_styled; }
    std::vector<TextRun> takeRuns() { return std::move(m_runs); }

private:
    /// In UTF-16 units.
    int length()
    {
        m_units += utf16Length(std::string_view(m_text).substr(m_counted));
        m_counted = m_text.size();
        return m_units;
    }

    XmlScanner& m_xml;
    const Palette& m_palette;
    std::string& m_text;
    std::vector<TextRun> m_runs;
    size_t m_counted = 0; ///< bytes of the text that `m_units` covers
    int m_units = 0;
    bool m_styled = false;
};

int hexDigit(char letter)
{
    if (letter >= '0' && letter <= '9')
        return letter - '0';
    const char small = static_cast<char>(letter | 0x20);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

/// The UTF-16 unit that "_xHHHH_" at the start of the text stands for; -1 if it stands for none.
int escapedUnit(std::string_view text)
{
    if (text.size() < 7 || text[0] != '_' || text[1] != 'x' || text[6] != '_')
        return -1;
    int unit = 0;
    for (size_t i = 2; i < 6; ++i) {
        const int digit = hexDigit(text[i]);
        if (digit < 0)
            return -1;
        unit = unit * 16 + digit;
    }
    return unit;
}

} // namespace

void resolveEscapes(std::string& text)
{
    size_t at = text.find("_x");
    if (at == std::string::npos)
        return;
    std::string resolved = text.substr(0, at);
    while (at < text.size()) {
        // Several in a row may be the halves of one character.
        std::u16string units;
        for (int unit; (unit = escapedUnit(std::string_view(text).substr(at))) >= 0; at += 7)
            units += static_cast<char16_t>(unit);
        resolved += QStringView(units).toUtf8().toStdString();
        const size_t nextEscape = std::min(text.find("_x", units.empty() ? at + 1 : at), text.size());
        resolved.append(text, at, nextEscape - at);
        at = nextEscape;
    }
    // A return before a line end shows as nothing, and on its own as a line end.
    size_t to = 0;
    for (size_t from = 0; from < resolved.size(); ++from) {
        if (resolved[from] != '\r')
            resolved[to++] = resolved[from];
        else if (from + 1 == resolved.size() || resolved[from + 1] != '\n')
            resolved[to++] = '\n';
    }
    resolved.resize(to);
    text = std::move(resolved);
}

int readRichText(XmlScanner& xml, const Palette& palette, TextTable& texts, std::string& buffer)
{
    TextPieces pieces(xml, palette, buffer);
    const size_t outside = xml.depth() - 1;
    while (true) {
        const XmlScanner::Token token = xml.next();
        if (token == XmlScanner::Token::End && xml.depth() == outside)
            break;
        if (token != XmlScanner::Token::Start)
            continue;
        if (xml.name() == nameKey("t"))
            pieces.readPlain();
        else if (xml.name() == nameKey("r"))
            pieces.readRun();
        else
            xml.skip();
    }
    const int index = texts.append(buffer);
    if (pieces.styled())
        texts.setRuns(index, pieces.takeRuns());
    return index;
}

void readSharedTexts(ByteStream& bytes, const Palette& palette, qint64 maxBytes, TextTable& texts)
{
    XmlScanner xml(bytes);
    std::string buffer;
    if (xml.next() != XmlScanner::Token::Start || xml.name() != nameKey("sst"))
        throw Fault{u"there are no texts in it"_s};
    while (true) {
        const XmlScanner::Token token = xml.next();
        if (token == XmlScanner::Token::Finish)
            return;
        if (token != XmlScanner::Token::Start)
            continue;
        if (xml.name() == nameKey("si"))
            readRichText(xml, palette, texts, buffer);
        else
            xml.skip();
        if (texts.bytes() > maxBytes)
            failTooLarge();
    }
}

} // namespace lumivane::engine
