#include "vyncore/xml/Parser.h"

#include "os/FileContent.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/xml/References.h"

#include <pugixml.hpp>

#include <string_view>
#include <utility>

namespace vyncore::xml {

namespace {

// References are left as they are: the library lets pass those that stand for nothing. A fragment is asked for so that
// text outside the outermost element shows, and a document type so that it can be told from that.
constexpr unsigned kParseOptions = pugi::parse_cdata | pugi::parse_eol | pugi::parse_wconv_attribute |
                                   pugi::parse_fragment | pugi::parse_doctype | pugi::parse_ws_pcdata;

struct Malformed {};

void Require(bool condition) {
    if (!condition)
        throw Malformed();
}

// Turns a text in UTF-16 into UTF-8 and leaves any other. With a byte too many at its end it is neither.
void TurnIntoUTF8(UTF8String& text) {
    bool const littleEndian = text.starts_with("\xFF\xFE");
    if ((!littleEndian && !text.starts_with("\xFE\xFF")) || text.size() % 2 != 0)
        return;
    UString units;
    for (std::size_t at = 2; at < text.size(); at += 2) {
        auto const first = static_cast<unsigned char>(text[at]);
        auto const second = static_cast<unsigned char>(text[at + 1]);
        units += static_cast<char16_t>(littleEndian ? first | second << 8 : first << 8 | second);
    }
    text = string::UTF16to8(units);
}

UString Resolved(char const* raw) {
    UTF8String text;
    Require(ResolveReferences(raw, text));
    return string::UTF8to16(text);
}

bool IsText(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

UString TextOf(pugi::xml_node node) {
    return node.type() == pugi::node_cdata ? string::UTF8to16(node.value()) : Resolved(node.value());
}

AbstractParseHandler::Attributes AttributesOf(pugi::xml_node element) {
    AbstractParseHandler::Attributes attributes;
    for (pugi::xml_attribute const attribute : element.attributes())
        Require(attributes.emplace(string::UTF8to16(attribute.name()), Resolved(attribute.value())).second);
    return attributes;
}

pugi::xml_node FindRoot(pugi::xml_document const& document) {
    pugi::xml_node root;
    for (pugi::xml_node const node : document.children()) {
        bool const isBlank = node.type() == pugi::node_pcdata &&
                             std::string_view(node.value()).find_first_not_of(" \t\r\n") == std::string_view::npos;
        if (node.type() == pugi::node_element && !root)
            root = node;
        else
            Require(isBlank || node.type() == pugi::node_doctype);
    }
    Require(root);
    return root;
}

// Goes through all that is in the document, without a call inside a call: it may be nested deeper than calls can go.
template <class Enter, class Leave>
void Walk(pugi::xml_node const root, Enter const& enter, Leave const& leave) {
    enter(root);
    for (pugi::xml_node node = root;;) {
        if (pugi::xml_node const child = node.first_child()) {
            enter(node = child);
            continue;
        }
        for (leave(node); node != root && !node.next_sibling(); leave(node))
            node = node.parent();
        if (node == root)
            return;
        enter(node = node.next_sibling());
    }
}

void Check(pugi::xml_node node) {
    if (IsText(node)) {
        TextOf(node);
        return;
    }
    Require(node.type() == pugi::node_element);
    AttributesOf(node);
}

void Tell(pugi::xml_node root, AbstractParseHandler& handler) {
    auto const enter = [&](pugi::xml_node node) {
        if (IsText(node))
            handler.Characters(TextOf(node));
        else
            handler.StartElement(string::UTF8to16(node.name()), AttributesOf(node));
    };
    auto const leave = [&](pugi::xml_node node) {
        if (!IsText(node))
            handler.EndElement(string::UTF8to16(node.name()));
    };
    Walk(root, enter, leave);
}

} // namespace

int Parser::Parse(UString const& path) const {
    auto text = os::ReadFileContent(path, kMostFileBytes);
    return text ? ParseText(std::move(*text)) : kUnreadable;
}

int Parser::ParseText(UTF8String text) const {
    TurnIntoUTF8(text);
    pugi::xml_document document;
    // With the text's final zero: the library puts one in the place of the last character.
    if (!IsXMLText(text) ||
        !document.load_buffer_inplace(text.data(), text.size() + 1, kParseOptions, pugi::encoding_utf8))
        return kMalformed;
    pugi::xml_node root;
    try {
        root = FindRoot(document);
        Walk(root, Check, [](pugi::xml_node) {});
    } catch (Malformed const&) {
        return kMalformed;
    }
    Tell(root, mHandler);
    return kSuccess;
}

Parser GetParser(AbstractParseHandler& handler) {
    return Parser(handler);
}

} // namespace vyncore::xml
