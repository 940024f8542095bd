#include "engine/read/package/XmlScanner.h"

#include "engine/read/package/ReadError.h"

#include <QStringDecoder>
#include <QStringList>
#include <array>
#include <charconv>
#include <cstring>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t firstCapacity = 256 << 10;

constexpr std::array<bool, 256> makeNameEnds()
{
    std::array<bool, 256> ends{};
    for (const char end : {' ', '\t', '\r', '\n', '/', '>', '=', '<', '"', '\''})
        ends[static_cast<unsigned char>(end)] = true;
    return ends;
}

constexpr std::array<bool, 256> nameEnds = makeNameEnds();

bool endsName(char letter)
{
    return nameEnds[static_cast<unsigned char>(letter)];
}

bool isBlank(char letter)
{
    return letter == ' ' || letter == '\n' || letter == '\r' || letter == '\t';
}

bool allBlank(std::string_view text)
{
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

} // namespace

XmlScanner::XmlScanner(ByteStream& bytes) : m_bytes(bytes), m_buffer(firstCapacity)
{
    m_at = m_end = m_buffer.data();
    m_attributes.reserve(16);
    if (have(2) && ((m_at[0] == '\xff' && m_at[1] == '\xfe') || (m_at[0] == '\xfe' && m_at[1] == '\xff') ||
                    m_at[0] == '\0' || m_at[1] == '\0'))
        convertFromUtf16();
    if (have(3) && std::memcmp(m_at, "\xef\xbb\xbf", 3) == 0)
        m_at += 3;
}

void XmlScanner::fail(const char* what) const
{
    const quint64 place = m_passed + static_cast<quint64>(m_at - m_buffer.data());
    throw Fault{u"its XML is broken (%1, near byte %2)"_s.arg(QLatin1StringView(what)).arg(place)};
}

/// Gets more bytes behind those not yet used, which move to the front. False at the end of the input.
bool XmlScanner::more()
{
    if (m_ended)
        return false;
    const size_t kept = static_cast<size_t>(m_end - m_at);
    m_passed += static_cast<quint64>(m_at - m_buffer.data());
    std::memmove(m_buffer.data(), m_at, kept);
    if (kept > maxTokenSize)
        fail("a tag or text of more than 16 MB");
    if (kept > m_buffer.size() / 2)
        m_buffer.resize(m_buffer.size() * 2);
    m_at = m_buffer.data();
    const size_t count = m_bytes.read(m_buffer.data() + kept, m_buffer.size() - kept);
    m_end = m_at + kept + count;
    m_ended = count == 0;
    return count > 0;
}

bool XmlScanner::have(size_t count)
{
    while (static_cast<size_t>(m_end - m_at) < count) {
        if (!more())
            return false;
    }
    return true;
}

/// UTF-16 is allowed and next to never met: the whole part is converted at once, under the bound of a token.
void XmlScanner::convertFromUtf16()
{
    QByteArray all;
    do {
        all.append(m_at, m_end - m_at);
        m_at = m_end;
        if (size_t(all.size()) > maxTokenSize)
            fail("a part in UTF-16 of more than 16 MB");
    } while (more());
    const bool bigEndian = all.startsWith("\xfe\xff") || all.startsWith('\0');
    const QStringConverter::Encoding encoding = bigEndian ? QStringConverter::Utf16BE : QStringConverter::Utf16LE;
    const QString text = QStringDecoder(encoding).decode(all);
    const QByteArray utf8 = text.toUtf8();
    m_buffer.assign(utf8.begin(), utf8.end());
    m_at = m_buffer.data();
    m_end = m_at + m_buffer.size();
}

XmlScanner::Token XmlScanner::next()
{
    if (m_pendingEnd) {
        m_pendingEnd = false;
        m_name = m_open.back();
        m_open.pop_back();
        return Token::End;
    }
    while (true) {
        if (m_at == m_end && !more())
            return finish();
        const Token token = *m_at == '<' ? markup() : textUntilTag();
        // Finish here stands for what is passed over: comments, instructions, blanks around the root.
        if (token != Token::Finish)
            return token;
    }
}

XmlScanner::Token XmlScanner::finish()
{
    if (!m_open.empty())
        fail("it breaks off inside an element");
    if (!m_rootSeen)
        fail("there is no element in it");
    return Token::Finish;
}

XmlScanner::Token XmlScanner::textUntilTag()
{
    size_t searched = 0;
    const void* tag = nullptr;
    do {
        tag = std::memchr(m_at + searched, '<', static_cast<size_t>(m_end - m_at) - searched);
        searched = static_cast<size_t>(m_end - m_at);
    } while (!tag && more());
    const char* textEnd = tag ? static_cast<const char*>(tag) : m_end;
    m_text = {m_at, static_cast<size_t>(textEnd - m_at)};
    m_literal = false;
    if (m_open.empty() && !allBlank(m_text))
        fail("text outside of every element");
    m_at = textEnd;
    return m_open.empty() ? Token::Finish : Token::Text;
}

XmlScanner::Token XmlScanner::markup()
{
    if (!have(2))
        fail("it breaks off inside a tag");
    switch (m_at[1]) {
    case '/':
        return endTag();
    case '!':
        return declaration();
    case '?':
        checkEncoding();
        passOver("<?", "?>");
        return Token::Finish;
    default:
        return startTag();
    }
}

XmlScanner::Token XmlScanner::declaration()
{
    if (have(4) && std::memcmp(m_at, "<!--", 4) == 0) {
        passOver("<!--", "-->");
        return Token::Finish;
    }
    if (have(9) && std::memcmp(m_at, "<![CDATA[", 9) == 0)
        return literalText();
    fail("it has declarations of its own, which no workbook needs");
}

/// What the declaration at the start says of the encoding. Texts in another one would come out wrong unnoticed.
void XmlScanner::checkEncoding()
{
    constexpr size_t longest = 200;
    have(longest);
    std::string_view declaration(m_at, std::min(longest, static_cast<size_t>(m_end - m_at)));
    declaration = declaration.substr(0, declaration.find("?>"));
    const size_t name = declaration.find(" encoding");
    if (!declaration.starts_with("<?xml") || name == std::string_view::npos)
        return;
    const size_t start = declaration.find_first_of("\"'", name);
    const size_t end = start == std::string_view::npos ? start : declaration.find(declaration[start], start + 1);
    if (end == std::string_view::npos)
        return;
    const std::string_view encoding = declaration.substr(start + 1, end - start - 1);
    const QString text = QString::fromLatin1(encoding.data(), static_cast<qsizetype>(encoding.size()));
    // What was in UTF-16 has been converted by now.
    static const QStringList known{u"utf-8"_s, u"utf8"_s, u"us-ascii"_s, u"ascii"_s, u"utf-16"_s};
    if (!known.contains(text, Qt::CaseInsensitive))
        throw Fault{u"its XML is written in an encoding that is not read here (%1)"_s.arg(text)};
}

XmlScanner::Token XmlScanner::literalText()
{
    if (m_open.empty())
        fail("text outside of every element");
    constexpr size_t opening = 9;
    size_t searched = opening;
    size_t found = std::string_view::npos;
    do {
        const std::string_view rest(m_at, static_cast<size_t>(m_end - m_at));
        found = rest.find("]]>", searched);
        searched = std::max(opening, rest.size() - 2);
    } while (found == std::string_view::npos && more());
    if (found == std::string_view::npos)
        fail("it breaks off inside a text");
    m_text = {m_at + opening, found - opening};
    m_literal = true;
    m_at += found + 3;
    return Token::Text;
}

void XmlScanner::passOver(std::string_view opening, std::string_view closing)
{
    m_at += opening.size();
    while (true) {
        const std::string_view rest(m_at, static_cast<size_t>(m_end - m_at));
        const size_t found = rest.find(closing);
        if (found != std::string_view::npos) {
            m_at += found + closing.size();
            return;
        }
        if (rest.size() >= closing.size())
            m_at = m_end - (closing.size() - 1);
        if (!more())
            fail("it breaks off inside a comment or instruction");
    }
}

XmlScanner::Token XmlScanner::startTag()
{
    if (m_open.empty() && m_rootSeen)
        fail("a second root element");
    while (!scanTag(m_at + 1)) {
        if (!more())
            fail("it breaks off inside a tag");
    }
    if (m_open.size() >= maxDepth)
        fail("elements nested more than 200 deep");
    m_rootSeen = true;
    m_open.push_back(m_name);
    return Token::Start;
}

/// Reads a start tag from behind its "<". False when the buffer ends before the tag does.
bool XmlScanner::scanTag(const char* from)
{
    const char* at = from;
    const char* const end = m_end;
    quint64 key = nameKey({});
    for (; at != end && !endsName(*at); ++at)
        key = *at == ':' ? nameKey({}) : (key ^ static_cast<unsigned char>(*at)) * 0x100000001b3;
    if (at == from && at != end)
        fail("a tag without a name");
    m_tag = {from, static_cast<size_t>(at - from)};
    m_attributes.clear();
    while (true) {
        while (at != end && isBlank(*at))
            ++at;
        if (at == end)
            return false;
        if (*at == '>')
            break;
        if (*at == '/') {
            if (at + 1 == end)
                return false;
            if (at[1] != '>')
                fail("a stray \"/\" in a tag");
            ++at;
            m_pendingEnd = true;
            break;
        }
        const char* const name = at;
        while (at != end && !endsName(*at))
            ++at;
        const std::string_view attributeName(name, static_cast<size_t>(at - name));
        while (at != end && isBlank(*at))
            ++at;
        if (at == end)
            return false;
        if (*at != '=' || attributeName.empty())
            fail("an attribute without a value");
        ++at;
        while (at != end && isBlank(*at))
            ++at;
        if (at == end)
            return false;
        const char quote = *at;
        if (quote != '"' && quote != '\'')
            fail("an attribute without quotes");
        const char* const value = ++at;
        while (at != end && *at != quote && *at != '<')
            ++at;
        if (at == end)
            return false;
        if (*at == '<')
            fail("a \"<\" in an attribute");
        m_attributes.push_back({attributeName, {value, static_cast<size_t>(at - value)}});
        ++at;
    }
    m_at = at + 1;
    m_name = key;
    return true;
}

XmlScanner::Token XmlScanner::endTag()
{
    while (true) {
        quint64 key = nameKey({});
        const char* at = m_at + 2;
        for (; at != m_end && !endsName(*at); ++at)
            key = *at == ':' ? nameKey({}) : (key ^ static_cast<unsigned char>(*at)) * 0x100000001b3;
        while (at != m_end && isBlank(*at))
            ++at;
        if (at != m_end) {
            if (*at != '>' || m_open.empty() || m_open.back() != key)
                fail("an element is closed that is not open");
            m_open.pop_back();
            m_name = key;
            m_at = at + 1;
            return Token::End;
        }
        if (!more())
            fail("it breaks off inside a tag");
    }
}

std::string_view XmlScanner::attribute(std::string_view name) const
{
    for (const Attribute& attribute : m_attributes) {
        if (attribute.name == name)
            return attribute.value;
    }
    return {};
}

void XmlScanner::skip()
{
    const size_t outside = m_open.size() - 1;
    while (m_open.size() > outside || m_pendingEnd)
        next();
}

void XmlScanner::appendText(std::string& to)
{
    while (true) {
        switch (next()) {
        case Token::Start:
            skip();
            break;
        case Token::Text:
            if (to.size() + m_text.size() > maxTokenSize)
                fail("a tag or text of more than 16 MB");
            if (m_literal)
                to.append(m_text);
            else
                appendDecoded(to, m_text);
            break;
        case Token::End:
        case Token::Finish:
            return;
        }
    }
}

bool XmlScanner::takeValue(std::string_view& value)
{
    constexpr std::string_view opening = "<v>", closing = "</v></c>";
    const size_t left = static_cast<size_t>(m_end - m_at);
    if (m_pendingEnd || left < opening.size() + closing.size() || std::memcmp(m_at, "<v>", 3) != 0)
        return false;
    const char* const start = m_at + opening.size();
    const char* const last = m_end - closing.size();
    const char* at = start;
    while (at <= last && *at != '<')
        ++at;
    if (at > last || std::memcmp(at, closing.data(), closing.size()) != 0)
        return false;
    value = {start, static_cast<size_t>(at - start)};
    m_at = at + closing.size();
    m_open.pop_back();
    return true;
}

namespace {

void appendUtf8(std::string& to, quint32 code)
{
    if (code < 0x80) {
        to += static_cast<char>(code);
    } else if (code < 0x800) {
        to += static_cast<char>(0xc0 | code >> 6);
        to += static_cast<char>(0x80 | (code & 0x3f));
    } else if (code < 0x10000) {
        to += static_cast<char>(0xe0 | code >> 12);
        to += static_cast<char>(0x80 | (code >> 6 & 0x3f));
        to += static_cast<char>(0x80 | (code & 0x3f));
    } else {
        to += static_cast<char>(0xf0 | code >> 18);
        to += static_cast<char>(0x80 | (code >> 12 & 0x3f));
        to += static_cast<char>(0x80 | (code >> 6 & 0x3f));
        to += static_cast<char>(0x80 | (code & 0x3f));
    }
}

/// Resolves the entity between "&" and ";". False for one that does not exist.
bool appendEntity(std::string& to, std::string_view entity)
{
    static constexpr std::pair<std::string_view, char> named[] = {
        {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    for (const auto& [name, letter] : named) {
        if (entity == name) {
            to += letter;
            return true;
        }
    }
    if (!entity.starts_with('#'))
        return false;
    const bool hex = entity.starts_with("#x");
    const std::string_view digits = entity.substr(hex ? 2 : 1);
    quint32 code = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code, hex ? 16 : 10);
    const bool surrogate = code >= 0xd800 && code < 0xe000;
    if (error != std::errc() || end != digits.data() + digits.size() || code > 0x10ffff || code == 0 || surrogate)
        return false;
    appendUtf8(to, code);
    return true;
}

} // namespace

void appendDecoded(std::string& to, std::string_view raw)
{
    size_t at = 0;
    while (true) {
        const size_t special = raw.find_first_of("&\r", at);
        to.append(raw.substr(at, special - at));
        if (special == std::string_view::npos)
            return;
        at = special + 1;
        if (raw[special] == '\r') {
            to += '\n';
            at += at < raw.size() && raw[at] == '\n';
            continue;
        }
        const size_t end = raw.substr(at, 12).find(';');
        if (end != std::string_view::npos && appendEntity(to, raw.substr(at, end)))
            at += end + 1;
        else
            to += '&';
    }
}

} // namespace lumivane::engine
