#pragma once

#include "engine/read/package/ByteStream.h"

#include <QtGlobal>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lumivane::engine {

/// A number that stands for the local name of an element ("row" of "x:row"), so that names compare in one step.
constexpr quint64 nameKey(std::string_view name)
{
    quint64 key = 0xcbf29ce484222325;
    for (const char letter : name)
        key = (key ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
    return key;
}

/// Walks once over XML that streams by, without building anything: the hot path of reading a sheet. Views that it
/// hands out are valid until the next step. Throws Fault for what is not well-formed, with the place in bytes.
class XmlScanner
{
public:
    enum class Token {
        Start,
        End, ///< comes for <empty/> elements too
        Text,
        Finish,
    };

    struct Attribute
    {
        std::string_view name;  ///< with its prefix
        std::string_view value; ///< as written, entities included
    };

    static constexpr size_t maxDepth = 200;
    static constexpr size_t maxTokenSize = 16 << 20;

    explicit XmlScanner(ByteStream& bytes);

    Token next();

    /// Of the element whose Start or End came last.
    quint64 name() const { return m_name; }
    std::span<const Attribute> attributes() const { return m_attributes; }
    std::string_view tag() const { return m_tag; } ///< name of the Start that came last, as written
    /// An attribute's value by name; a null view (data() == nullptr) where there is none.
    std::string_view attribute(std::string_view name) const;

    /// Of the Text that came last, as written.
    std::string_view text() const { return m_text; }
    bool textIsLiteral() const { return m_literal; } ///< of a CDATA section: no entities in it

    /// Right after the Start of an element: passes over everything up to and including its End.
    void skip();
    /// Right after a Start: the decoded text directly in the element, up to and including its End, put behind `to`.
    /// Elements inside are passed over.
    void appendText(std::string& to);
    /// Right after a Start tag that ends with "<v>text</v></c>", as nearly all cells do: takes all of that in one step
    /// and gives the text as written. False when it looks in any way different; nothing is taken then.
    bool takeValue(std::string_view& value);

    size_t depth() const { return m_open.size(); }

private:
    bool more();
    bool have(size_t count);
    Token textUntilTag();
    Token markup();
    Token startTag();
    Token endTag();
    Token declaration();
    Token literalText();
    void checkEncoding();
    void passOver(std::string_view opening, std::string_view closing);
    Token finish();
    bool scanTag(const char* from);
    void convertFromUtf16();
    [[noreturn]] void fail(const char* what) const;

    ByteStream& m_bytes;
    std::vector<char> m_buffer;
    const char* m_at;
    const char* m_end;
    quint64 m_passed = 0; ///< bytes that have left the buffer
    bool m_ended = false;

    quint64 m_name = 0;
    std::string_view m_tag;
    bool m_pendingEnd = false;
    bool m_rootSeen = false;
    bool m_literal = false;
    std::string_view m_text;
    std::vector<Attribute> m_attributes;
    std::vector<quint64> m_open;
};

/// Puts XML text as it is written behind `to`, with its entities resolved and line ends made "\n". Unknown entities
/// stay as written.
void appendDecoded(std::string& to, std::string_view raw);

} // namespace lumivane::engine
