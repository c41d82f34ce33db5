#include "vyncore/proplist/PropListText.h"

#include "vyncore/proplist/StoredNumber.h"
#include "vyncore/proplist/StoredText.h"
#include "vyncore/xml/References.h"

#include <pugixml.hpp>

#include <concepts>
#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <variant>

namespace vyncore::proplist::utils {

namespace {

constexpr char const* kRoot = "proplist";
constexpr char const* kList = "list";
constexpr char const* kVersion = "1";

template <class T>
concept IsText = std::same_as<T, UTF8String> || std::same_as<T, UString>;

template <class T>
struct Element;
template <>
struct Element<float> {
    static constexpr char const* kName = "float";
};
template <>
struct Element<int> {
    static constexpr char const* kName = "int";
};
template <>
struct Element<unsigned> {
    static constexpr char const* kName = "unsigned";
};
template <>
struct Element<bool> {
    static constexpr char const* kName = "bool";
};
template <>
struct Element<UTF8String> {
    static constexpr char const* kName = "utf8";
};
template <>
struct Element<UString> {
    static constexpr char const* kName = "text";
};
template <>
struct Element<std::list<float>> {
    static constexpr char const* kName = "floats";
};

// Writing: the library leaves out what there is no memory for, and says so only here.
template <class Made>
Made Need(Made made) {
    if (!made)
        throw std::bad_alloc();
    return made;
}

void AddAttribute(pugi::xml_node element, char const* name, UTF8String const& value) {
    Need(Need(element.append_attribute(name)).set_value(value.c_str()));
}

pugi::xml_node AddElement(pugi::xml_node parent, char const* name, UTF8String const& key) {
    pugi::xml_node const element = Need(parent.append_child(name));
    StoredText const stored = StoreText(key);
    AddAttribute(element, "key", stored.text);
    if (stored.escaped)
        AddAttribute(element, "key-escaped", "true");
    return element;
}

void AddValue(pugi::xml_node parent, UTF8String const& key, PropList::Value const& value) {
    auto const add = [&]<class T>(T const& held) {
        pugi::xml_node element = AddElement(parent, Element<T>::kName, key);
        StoredText stored;
        if constexpr (IsText<T>)
            stored = StoreText(held);
        else
            stored.text = StoreNumber(held);
        if (stored.escaped)
            AddAttribute(element, "escaped", "true");
        Need(Need(element.append_child(pugi::node_pcdata)).set_value(stored.text.c_str()));
    };
    std::visit(add, value);
}

class Output final : public pugi::xml_writer {
public:
    UTF8String text;

    void write(void const* data, std::size_t size) override { text.append(static_cast<char const*>(data), size); }
};

constexpr char const* kIndent = "  ";

void Print(pugi::xml_node node, unsigned depth, Output& output) {
    node.print(output, kIndent, pugi::format_indent, pugi::encoding_utf8, depth);
}

void PrintValues(PropList const& list, unsigned depth, Output& output) {
    pugi::xml_document values;
    for (auto const& [key, value] : list.GetValues())
        AddValue(values, key, value);
    for (pugi::xml_node const element : values.children())
        Print(element, depth, output);
}

// Takes the element of a list, which has no content yet. List by list, so that a large tree is not built once more.
void PrintList(pugi::xml_node element, PropList const& list, unsigned depth, Output& output) {
    if (depth >= kMostListLevels)
        throw std::length_error("a property list is nested too deep to be written");
    Print(element, depth, output);
    if (list.IsEmpty())
        return;
    constexpr std::string_view kEmptyEnd = " />\n";
    output.text.replace(output.text.size() - kEmptyEnd.size(), kEmptyEnd.size(), ">\n");
    PrintValues(list, depth + 1, output);
    for (auto const& [key, sublist] : list.GetLists()) {
        pugi::xml_document inner;
        PrintList(AddElement(inner, kList, UTF8String(key)), *sublist, depth + 1, output);
    }
    for (unsigned level = 0; level < depth; ++level)
        output.text += kIndent;
    output.text.append("</").append(element.name()).append(">\n");
}

// Reading.
struct BadText {};

void Require(bool condition) {
    if (!condition)
        throw BadText();
}

struct Attributes {
    UTF8String key;
    bool escaped = false;
};

bool ReadFlag(pugi::xml_attribute attribute) {
    bool value = false;
    Require(RestoreNumber(attribute.value(), value));
    return value;
}

Attributes ReadAttributes(pugi::xml_node element) {
    StoredText key;
    pugi::xml_attribute const keyAttribute = element.attribute("key");
    pugi::xml_attribute const keyEscaped = element.attribute("key-escaped");
    pugi::xml_attribute const escaped = element.attribute("escaped");
    // Each is found once, so that another one, or one of them twice, shows.
    for (pugi::xml_attribute const attribute : element.attributes())
        Require(attribute == keyAttribute || attribute == keyEscaped || attribute == escaped);
    Require(keyAttribute && xml::ResolveReferences(keyAttribute.value(), key.text));
    key.escaped = keyEscaped && ReadFlag(keyEscaped);
    Attributes attributes;
    attributes.escaped = escaped && ReadFlag(escaped);
    Require(RestoreText(key, attributes.key));
    return attributes;
}

// The text that an element begins with is the element's own value (parse_embed_pcdata).
UTF8String ReadContent(pugi::xml_node element) {
    UTF8String content;
    Require(xml::ResolveReferences(element.value(), content));
    for (pugi::xml_node const part : element.children()) {
        UTF8String text = part.value();
        Require(part.type() == pugi::node_cdata ||
                (part.type() == pugi::node_pcdata && xml::ResolveReferences(part.value(), text)));
        content += text;
    }
    return content;
}

template <class T>
bool ReadIf(pugi::xml_node element, Attributes const& attributes, PropList& list) {
    if (std::string_view(element.name()) != Element<T>::kName)
        return false;
    T value{};
    if constexpr (IsText<T>)
        Require(RestoreText({ReadContent(element), attributes.escaped}, value));
    else
        Require(!attributes.escaped && RestoreNumber(ReadContent(element), value));
    Require(list.AddValue(attributes.key, std::move(value)));
    return true;
}

template <class... Types>
bool ReadAnyOf(std::variant<Types...> const*, pugi::xml_node element, Attributes const& attributes, PropList& list) {
    return (ReadIf<Types>(element, attributes, list) || ...);
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == text.npos;
}

bool IsBlank(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata && IsBlank(std::string_view(node.value()));
}

void ReadList(pugi::xml_node element, PropList& list, std::size_t level) {
    Require(level <= kMostListLevels && IsBlank(std::string_view(element.value())));
    for (pugi::xml_node const child : element.children()) {
        if (IsBlank(child))
            continue;
        Require(child.type() == pugi::node_element);
        Attributes const attributes = ReadAttributes(child);
        if (ReadAnyOf(static_cast<PropList::Value const*>(nullptr), child, attributes, list))
            continue;
        Require(std::string_view(child.name()) == kList && !attributes.escaped && !list.FindList(attributes.key));
        ReadList(child, list.CreateList(attributes.key), level + 1);
    }
}

pugi::xml_node FindRoot(pugi::xml_document const& document) {
    pugi::xml_node const root = document.child(kRoot);
    for (pugi::xml_node const node : document.children())
        Require(node == root || IsBlank(node));
    pugi::xml_attribute const version = root.first_attribute();
    Require(std::string_view(version.name()) == "version" && version == root.last_attribute());
    Require(std::string_view(version.value()) == kVersion);
    return root;
}

// References are left as they are: the library lets pass those that stand for nothing. A fragment is asked for so that
// text outside the outermost element, and a document type, show. A text keeps the blanks between its comments; where
// there are no comments, the blanks between elements aren't worth the memory.
unsigned ParseOptions(std::string_view text) {
    constexpr unsigned kOptions =
        pugi::parse_cdata | pugi::parse_eol | pugi::parse_fragment | pugi::parse_doctype | pugi::parse_embed_pcdata;
    bool const isPlain = text.find("<!") == text.npos && text.find("<?", 1) == text.npos;
    return kOptions | (isPlain ? pugi::parse_ws_pcdata_single : pugi::parse_ws_pcdata);
}

} // namespace

UTF8String WritePropList(PropList const& list) {
    pugi::xml_document document;
    pugi::xml_node const root = Need(document.append_child(kRoot));
    AddAttribute(root, "version", kVersion);
    Output output;
    output.text = "<?xml version=\"1.0\"?>\n";
    PrintList(root, list, 0, output);
    return std::move(output.text);
}

bool ReadPropList(UTF8String const& text, PropList& list) {
    return ReadPropList(UTF8String(text), list);
}

bool ReadPropList(UTF8String&& text, PropList& list) {
    // The library takes them as they come, and a zero for the end.
    if (!xml::IsXMLText(text))
        return false;
    pugi::xml_document document;
    // With the text's final zero: the library puts one in the place of the last character.
    if (!document.load_buffer_inplace(text.data(), text.size() + 1, ParseOptions(text), pugi::encoding_utf8))
        return false;
    try {
        PropList read;
        ReadList(FindRoot(document), read, 1);
        list = std::move(read);
    } catch (BadText const&) {
        return false;
    }
    return true;
}

} // namespace vyncore::proplist::utils
