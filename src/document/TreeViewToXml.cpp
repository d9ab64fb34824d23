#include "document/TreeViewToXml.h"

#include "core/AtomicFile.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "document/TreeQueries.h"

#include <pugixml.hpp>

#include <sstream>
#include <string_view>
#include <vector>

namespace mw {

namespace {

// Bytes from 0x80 up belong to UTF-8 letters, which XML names may hold.
bool IsNameStart(unsigned char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':' || c >= 0x80;
}

bool IsNameChar(unsigned char c)
{
    return IsNameStart(c) || (c >= '0' && c <= '9') || c == '.' || c == '-';
}

bool IsXmlName(std::string_view name)
{
    if (name.empty() || !IsNameStart(static_cast<unsigned char>(name.front())))
        return false;
    for (const char c : name.substr(1)) {
        if (!IsNameChar(static_cast<unsigned char>(c)))
            return false;
    }
    return true;
}

// A comment may neither begin with "-" against its opening nor end with one against its
// closing, and the reader trims it; so the text is padded with blanks before it is written.
std::string PaddedTag(std::string tag, bool padEnd)
{
    if (tag.front() == '-')
        tag.insert(0, " ");
    if (tag.front() != ' ')
        tag.insert(0, " ");
    if (padEnd && tag.back() != ' ')
        tag += ' ';
    return tag;
}

// Comment rows are padded at both ends at once, which leaves a second blank behind a text
// that ended in one; files have always been written so.
std::string PaddedRowTag(std::string tag)
{
    if (tag.front() == '-')
        tag = " " + tag + " ";
    if (tag.front() != ' ')
        tag = " " + tag + " ";
    if (tag.back() != ' ')
        tag += ' ';
    return tag;
}

// A second row of one name overwrites the value in place, as the attribute keeps its position.
void SetAttribute(pugi::xml_node element, const std::string& name, const std::string& value)
{
    pugi::xml_attribute attribute = element.attribute(name.c_str());
    if (!attribute)
        attribute = element.append_attribute(name.c_str());
    attribute.set_value(value.c_str());
}

void AppendComment(pugi::xml_node element, const std::string& text)
{
    element.append_child(pugi::node_comment).set_value(text.c_str());
}

// How the extra info of an element is written: not at all (the root's own children in a project
// file), padded in front only (the top of an undo string) or at both ends.
enum class TagPadding { None, Start, Full };

class XmlWriter {
public:
    // `standalone` is set for a template: backgroundVideoID rows are resolved against it.
    // `locationsFrom` is set for a copy elsewhere: relative locations are resolved against it.
    explicit XmlWriter(const Document* standalone = nullptr, const std::string* locationsFrom = nullptr)
        : standalone_(standalone), locationsFrom_(locationsFrom)
    {
    }

    std::string Error;

    pugi::xml_node CreateElement(pugi::xml_node parent, const DocNode& node);
    // The element of a node with children: its extra info first, then its content.
    bool WriteElement(DocNode& node, pugi::xml_node parent, TagPadding padding);
    // An undo string or a template: the node's own rows go without their comments, and its
    // child elements with `padding`; below them everything is written as in a project file.
    bool WriteSubtree(DocNode& node, pugi::xml_node parent, TagPadding padding);
    // A row holding "=" becomes an attribute; one whose name is no XML name is dropped silently.
    bool WriteRow(const DocNode& row, pugi::xml_node element);

private:
    pugi::xml_node CreateTaggedElement(DocNode& node, pugi::xml_node parent, TagPadding padding);
    bool WriteChildren(DocNode& node, pugi::xml_node element);
    bool WriteStandaloneBackground(pugi::xml_node element, const std::string& name, const std::string& id);

    const Document* standalone_;
    const std::string* locationsFrom_;
};

pugi::xml_node XmlWriter::CreateElement(pugi::xml_node parent, const DocNode& node)
{
    if (!IsXmlName(node.Text)) {
        Error = "The element name \"" + node.Text + "\" is not a valid XML name, so the file cannot be saved.";
        return {};
    }
    return parent.append_child(node.Text.c_str());
}

pugi::xml_node XmlWriter::CreateTaggedElement(DocNode& node, pugi::xml_node parent, TagPadding padding)
{
    const pugi::xml_node element = CreateElement(parent, node);
    if (element && padding != TagPadding::None && !node.Tag.empty()) {
        node.Tag = PaddedTag(node.Tag, padding == TagPadding::Full);
        AppendComment(element, node.Tag);
    }
    return element;
}

bool XmlWriter::WriteElement(DocNode& node, pugi::xml_node parent, TagPadding padding)
{
    const pugi::xml_node element = CreateTaggedElement(node, parent, padding);
    return element && WriteChildren(node, element);
}

bool XmlWriter::WriteSubtree(DocNode& node, pugi::xml_node parent, TagPadding padding)
{
    const pugi::xml_node element = CreateTaggedElement(node, parent, padding);
    if (!element)
        return false;
    for (const auto& child : node) {
        const bool written = child->HasChildren() ? WriteElement(*child, element, padding) : WriteRow(*child, element);
        if (!written)
            return false;
    }
    return true;
}

bool XmlWriter::WriteChildren(DocNode& node, pugi::xml_node element)
{
    for (const auto& child : node) {
        if (child->HasChildren()) {
            if (!WriteElement(*child, element, TagPadding::Full))
                return false;
            continue;
        }
        if (!child->Tag.empty()) {
            child->Tag = PaddedRowTag(child->Tag);
            AppendComment(element, child->Tag);
        }
        if (!WriteRow(*child, element))
            return false;
    }
    return true;
}

bool XmlWriter::WriteRow(const DocNode& row, pugi::xml_node element)
{
    if (row.Text.find('=') == std::string::npos)
        return true;
    const std::string name = RowName(row.Text);
    if (!IsXmlName(name))
        return true;
    std::string value = RowValue(row.Text);
    if (locationsFrom_ && EqualsNoCase(name, "location") && !value.empty() && !IsAbsoluteLocation(value))
        value = ResolveLocation(*locationsFrom_, value);
    if (standalone_ && EqualsNoCase(name, "backgroundVideoID"))
        return WriteStandaloneBackground(element, name, value);
    SetAttribute(element, name, value);
    return true;
}

bool XmlWriter::WriteStandaloneBackground(pugi::xml_node element, const std::string& name, const std::string& id)
{
    const Document& doc = *standalone_;
    const DocNode* track = doc.Tree.ObjectNode(id);
    const DocNode* source = track ? doc.Tree.ObjectNode(GetPropertyInNode(*track, "mediaSourceID")) : nullptr;
    if (!source) {
        Error = "The background video " + id + " of the menu is not in the project, so the template cannot be saved.";
        return false;
    }
    SetAttribute(element, "startFrame", GetPropertyInNode(*track, "startFrame"));
    SetAttribute(element, "endFrame", GetPropertyInNode(*track, "endFrame"));
    SetAttribute(element, name, ResolveLocation(doc.ProjectFile, GetPropertyInNode(*source, "location")));
    return true;
}

// The outside Windows tools read these files, so lines end in CR LF.
class CrLfWriter : public pugi::xml_writer {
public:
    std::string Text;

    void write(const void* data, size_t size) override
    {
        std::string_view bytes(static_cast<const char*>(data), size);
        for (auto nl = bytes.find('\n'); nl != std::string_view::npos; nl = bytes.find('\n')) {
            Text.append(bytes.substr(0, nl)).append("\r\n");
            bytes.remove_prefix(nl + 1);
        }
        Text.append(bytes);
    }
};

bool SaveDocument(const pugi::xml_document& xml, const std::string& path, std::string& error)
{
    CrLfWriter writer;
    xml.save(writer, "\t", pugi::format_indent | pugi::format_no_declaration);
    return WriteFileAtomically(path, writer.Text, error);
}

} // namespace

bool SaveTreeToFile(DocTree& tree, const std::string& path, std::string& error, const std::string& locationsFrom)
{
    const std::vector<DocNode*> nodes = tree.Flat();
    if (nodes.empty()) {
        error = "The project is empty, so there is nothing to save.";
        return false;
    }
    XmlWriter writer(nullptr, locationsFrom.empty() ? nullptr : &locationsFrom);
    pugi::xml_document xml;
    const DocNode& root = *nodes.front();
    const pugi::xml_node rootElement = writer.CreateElement(xml, root);
    if (!rootElement) {
        error = writer.Error;
        return false;
    }
    // The root's own content is its children; a node beside the root has no parent and is left
    // out. An element deeper down that is named like the root stays where it is: taking it for
    // the root would write its content twice and the file could not be opened again.
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        DocNode& node = *nodes[i];
        if (node.Parent() != &root)
            continue;
        const bool written = node.HasChildren() ? writer.WriteElement(node, rootElement, TagPadding::None)
                                                : writer.WriteRow(node, rootElement);
        if (!written) {
            error = writer.Error;
            return false;
        }
    }
    return SaveDocument(xml, path, error);
}

std::string NodeToXmlString(DocNode& node)
{
    XmlWriter writer;
    pugi::xml_document xml;
    if (!writer.WriteSubtree(node, xml, TagPadding::Start))
        return "";
    std::ostringstream out;
    xml.save(out, "", pugi::format_raw | pugi::format_no_declaration);
    return out.str();
}

bool SaveNodeToTemplate(const Document& doc, DocNode& node, const std::string& path, std::string& error)
{
    XmlWriter writer(&doc);
    pugi::xml_document xml;
    if (!writer.WriteSubtree(node, xml, TagPadding::Full)) {
        error = writer.Error;
        return false;
    }
    return SaveDocument(xml, path, error);
}

} // namespace mw
