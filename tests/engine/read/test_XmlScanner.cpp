#include "engine/read/package/XmlScanner.h"

#include "engine/read/package/ReadError.h"
#include "support/TextTable.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace engine;

namespace {

/// Gives its bytes a few at a time, so that every tag meets the end of the scanner's buffer somewhere.
class DroppingStream : public ByteStream
{
public:
    DroppingStream(std::string bytes, size_t step) : m_bytes(std::move(bytes)), m_step(step) {}
    size_t read(char* to, size_t most) override
    {
        const size_t count = std::min({most, m_step, m_bytes.size() - m_at});
        m_bytes.copy(to, count, m_at);
        m_at += count;
        return count;
    }

private:
    std::string m_bytes;
    size_t m_step;
    size_t m_at = 0;
};

/// "<a x=1>text</>": starts with their attributes, texts, ends.
std::string walked(const std::string& xml, size_t step = 1 << 20)
{
    DroppingStream stream(xml, step);
    std::string seen;
    try {
        XmlScanner scanner(stream);
        while (true) {
            switch (scanner.next()) {
            case XmlScanner::Token::Start:
                seen += scanner.name() == nameKey("row") ? "<row" : scanner.name() == nameKey("c") ? "<c" : "<other";
                for (const XmlScanner::Attribute& attribute : scanner.attributes())
                    seen.append(" ").append(attribute.name).append("=").append(attribute.value);
                seen += ">";
                break;
            case XmlScanner::Token::End:
                seen += "</>";
                break;
            case XmlScanner::Token::Text:
                if (scanner.textIsLiteral())
                    seen.append("[").append(scanner.text()).append("]");
                else
                    appendDecoded(seen, scanner.text());
                break;
            case XmlScanner::Token::Finish:
                return seen;
            }
        }
    } catch (const Fault& fault) {
        return "fault: " + fault.what.toStdString();
    }
}

std::string utf16(const std::string& ascii, bool bigEndian, bool mark)
{
    std::string wide = mark ? (bigEndian ? "\xfe\xff" : "\xff\xfe") : "";
    for (const char letter : ascii)
        wide += bigEndian ? std::string{'\0', letter} : std::string{letter, '\0'};
    return wide;
}

} // namespace

TEST(XmlScanner, WalksOverWhatWritersWrite)
{
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"plain", "<row r=\"1\"><c>5</c></row>", "<row r=1><c>5</></>"},
        {"prefix", "<x:row x:r=\"1\"><x:c/></x:row>", "<row x:r=1><c></></>"},
        {"other quotes, blanks", "<row  r = '1\"' \n s='>' ><c\t/></row >", "<row r=1\" s=>><c></></>"},
        {"declaration and comments", "<?xml version=\"1.0\"?><!-- <c> --><row><!--a--b--><?p >?></row>\n<!---->",
         "<row></>"},
        {"encoding", "<?xml version='1.0' encoding='Utf-8' standalone='yes'?><row/>", "<row></>"},
        {"mark", "\xef\xbb\xbf<row/>", "<row></>"},
        {"entities", "<row>&lt;&amp;&gt;&quot;&apos;&#65;&#x20ac;&#x1F600;</row>", "<row><&>\"'A€😀</>"},
        {"unknown entities", "<row>&foo; &#xD800; &#0; & &amp</row>", "<row>&foo; &#xD800; &#0; & &amp</>"},
        {"literal text", "<row>a<![CDATA[<c>&amp;]]]]>b</row>", "<row>a[<c>&amp;]]]b</>"},
        {"line ends", "<row>a\r\nb\rc\nd</row>", "<row>a\nb\nc\nd</>"},
        {"UTF-16, little end first", utf16("<row>a</row>", false, true), "<row>a</>"},
        {"UTF-16, big end first", utf16("<row>a</row>", true, true), "<row>a</>"},
        {"UTF-16 without mark", utf16("<row>a</row>", false, false), "<row>a</>"},
    };
    for (const auto& [name, xml, expected] : cases) {
        for (const size_t step : {1, 2, 3, 7, 1 << 20})
            EXPECT_EQ(walked(xml, step), expected) << name << " in steps of " << step;
    }
}

TEST(XmlScanner, RefusesWhatIsNotWellFormed)
{
    std::string deep;
    for (int i = 0; i < 201; ++i)
        deep += "<row>";
    for (const auto& [name, xml, expected] : textTable<3>(R"(
        nothing           |                        | there is no element in it
        only blanks       | ·⏎                     | there is no element in it
        cut in an element | <row><c>               | it breaks off inside an element
        cut in a text     | <row>abc               | it breaks off inside an element
        cut in a tag      | <row r="1              | it breaks off inside a tag
        cut in an end tag | <row></ro              | it breaks off inside a tag
        cut in a comment  | <row><!--·             | it breaks off inside a comment
        cut in a literal  | <row><![CDATA[ ]]      | it breaks off inside a text
        crossed           | <row><c></row></c>     | an element is closed that is not open
        closed too often  | <row/></row>           | an element is closed that is not open
        two roots         | <row/><row/>           | a second root element
        text outside      | <row/>x                | text outside of every element
        no quotes         | <row r=1/>             | an attribute without quotes
        no value          | <row r/>               | an attribute without a value
        tag in a tag      | <row r="<c>"/>         | a "<" in an attribute
        no name           | <row>< c/></row>       | a tag without a name
        encoding cut off  | <?xml encoding="       | it breaks off inside a comment or instruction
        own entities      | <!DOCTYPE x [<!ENTITY a "b">]><row/> | declarations of its own
        other encoding    | <?xml encoding="ISO-8859-1"?><row/>  | an encoding that is not read here (ISO-8859-1))")) {
        const std::string found = walked(xml.toStdString());
        EXPECT_NE(found.find(expected.toStdString()), std::string::npos) << name << ": " << found;
        EXPECT_EQ(walked(xml.toStdString(), 1), found) << name;
    }
    EXPECT_NE(walked(deep).find("nested more than 200 deep"), std::string::npos);
}

TEST(XmlScanner, CarriesTagsOverTheEndOfItsBuffer)
{
    // Odd lengths let the end of the buffer fall into every part of a row sooner or later.
    std::string xml = "<row>", expected = "<row>";
    for (int i = 0; i < 60000; ++i) {
        const std::string number = std::to_string(i);
        xml += "<c r=\"" + number + "\">" + number + "</c>";
        expected += "<c r=" + number + ">" + number + "</>";
    }
    EXPECT_EQ(walked(xml + "</row>"), expected + "</>");
}

TEST(XmlScanner, GrowsForLongTextsUpToItsBound)
{
    const std::string allowed(15 << 20, 'x');
    EXPECT_EQ(walked("<row>" + allowed + "</row>").size(), allowed.size() + 8);
    const std::string tooLong(17 << 20, 'x');
    const std::string pieces = "<row>" + allowed + "<!-- -->" + allowed + "</row>";
    DroppingStream stream(pieces, pieces.size());
    XmlScanner scanner(stream);
    scanner.next();
    std::string text;
    EXPECT_THROW(scanner.appendText(text), Fault) << "a text in two pieces";
    EXPECT_NE(walked("<row>" + tooLong + "</row>").find("a tag or text of more than 16 MB"), std::string::npos);
}

TEST(XmlScanner, TellsThePlaceOfAFault)
{
    const std::string blanks(300000, ' ');
    EXPECT_EQ(walked("<row>" + blanks + "<c x/></row>"),
              "fault: its XML is broken (an attribute without a value, near byte 300005)");
}

} // namespace lumivane::test
