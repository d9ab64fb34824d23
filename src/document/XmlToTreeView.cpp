#include "document/XmlToTreeView.h"

#include "core/Text.h"
#include "document/ExtraInfo.h"
#include "document/ObjectIds.h"
#include "document/SchemaNodes.h"

#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace mw {

namespace {

// Declarations and document types are kept so that a file opening with one is seen, and
// refused, by the root check.
constexpr unsigned kParseOptions = pugi::parse_default | pugi::parse_declaration | pugi::parse_doctype |
                                   pugi::parse_pi | pugi::parse_comments;

// Thrown when an objectID stands a second time: the read is then dropped as a whole.
struct DuplicateObjectID {
    std::string Id;
};

constexpr std::array<std::pair<std::string_view, std::string_view>, 13> kElementKinds{{
    {"action", "action"},
    {"divxmediamenu", "menu"},
    {"buttonmenu", "button"},
    {"media", "media"},
    {"mediasource", "movie"},
    {"title", "movie"},
    {"menurectangle", "menurect"},
    {"menutracks", "menutracks"},
    {"languagemenus", "menulang"},
    {"translationtable", "transtable"},
    {"translationlookup", "translookup"},
    {"translation", "trans"},
    {"chapter", "chapter"},
}};

std::string KindOfElement(const std::string& name, const DocNode* parent)
{
    const std::string lowered = Lower(name);
    for (const auto& [element, kind] : kElementKinds) {
        if (lowered == element)
            return std::string(kind);
    }
    // The members of an action list have many names; they are known by their list.
    if (parent && Lower(parent->Text) == "action")
        return "action";
    return "node";
}

// Builds nodes from XML with the keys of a file read: one counter per kind of key, and "k" with
// the identifier for every element that has an objectID.
class TreeBuilder {
public:
    TreeBuilder(DocTree& tree, long nextObjectID) : NextObjectID(nextObjectID), tree_(tree) {}

    long NextObjectID;
    long XmlNodeCount = 0;
    long XmlTextCount = 0; // also raised once after every attribute
    long XmlAttrCount = 0;
    long XmlCommentCount = 0;

    // Undo adds to a tree that holds the keys of earlier reads; counting goes on above them.
    void ResumeAbove(const DocTree& existing);

    // A node at document level. An element gets `elementKind`, or its kind by name when that is
    // empty. Text beside the root has no place in the tree and is passed over.
    void AddTopLevel(pugi::xml_node xml, const std::string& elementKind);
    void AddAttributes(DocNode& node, pugi::xml_node xml);
    void AddChildren(DocNode& node, pugi::xml_node xml);

private:
    void AddCommentNode(DocNode* parent, const std::string& text);

    DocTree& tree_;
};

void TreeBuilder::ResumeAbove(const DocTree& existing)
{
    existing.ForEach([this](DocNode& node) {
        const std::string& key = node.Key();
        if (key.size() < 2 || key.find_first_not_of("0123456789", 1) != std::string::npos)
            return;
        const long number = static_cast<long>(LeadingNumber(std::string_view(key).substr(1)));
        long* counter = key[0] == 'n'   ? &XmlNodeCount
                        : key[0] == 't' ? &XmlTextCount
                        : key[0] == 'a' ? &XmlAttrCount
                        : key[0] == 'c' ? &XmlCommentCount
                                        : nullptr;
        if (counter)
            *counter = std::max(*counter, number);
    });
}

void TreeBuilder::AddCommentNode(DocNode* parent, const std::string& text)
{
    DocNode& comment = tree_.Add(parent, Relationship::Child, "c" + std::to_string(XmlCommentCount), text, "comment");
    comment.Tag = text;
}

void TreeBuilder::AddTopLevel(pugi::xml_node xml, const std::string& elementKind)
{
    const pugi::xml_node_type type = xml.type();
    if (type == pugi::node_comment) {
        ++XmlCommentCount;
        AddCommentNode(nullptr, Trim(xml.value()));
        return;
    }
    const bool instruction = type == pugi::node_pi || type == pugi::node_declaration;
    if (!instruction && type != pugi::node_element)
        return;
    const std::string kind = instruction            ? "procinstr"
                             : !elementKind.empty() ? elementKind
                                                    : KindOfElement(xml.name(), nullptr);
    DocNode& node = tree_.Add(nullptr, Relationship::Last, "n" + std::to_string(++XmlNodeCount), xml.name(), kind);
    AddAttributes(node, xml);
    AddChildren(node, xml);
}

void TreeBuilder::AddAttributes(DocNode& node, pugi::xml_node xml)
{
    bool hasID = false;
    for (pugi::xml_attribute attribute : xml.attributes()) {
        ++XmlAttrCount;
        const std::string name = attribute.name();
        const std::string value = attribute.value();
        std::string kind = "prop";
        if (Upper(name) == "OBJECTID") {
            kind = "objectid";
            const long id = static_cast<long>(LeadingNumber(value));
            const std::string key = "k" + std::to_string(id);
            // A second objectID on one element (names differ in case only) counts as a second
            // element: every walk expects one identifier per element.
            if (hasID || tree_.Find(key))
                throw DuplicateObjectID{std::to_string(id)};
            hasID = true;
            tree_.SetKey(node, key);
            if (NextObjectID <= id)
                NextObjectID = id + 1;
        }
        if (Lower(node.Text) == "mediatrack" && Lower(name) == "type") {
            // Another type leaves the kind the element has by its name.
            if (const std::string trackKind = TrackNodeKind(value); trackKind != "node")
                node.Image = trackKind;
        }
        tree_.AddChild(node, "a" + std::to_string(XmlAttrCount), name + " = " + value, kind);
        ++XmlTextCount;
    }
}

void TreeBuilder::AddChildren(DocNode& node, pugi::xml_node xml)
{
    for (pugi::xml_node child : xml.children()) {
        switch (child.type()) {
        case pugi::node_pcdata:
        case pugi::node_cdata:
            tree_.AddChild(node, "t" + std::to_string(++XmlTextCount), child.value(), "text");
            break;
        case pugi::node_comment: {
            ++XmlCommentCount;
            // The writer pads comments with blanks; they are not part of the text.
            const std::string text = Trim(child.value());
            if (IsExtraInfo(text))
                node.Tag = text;
            else
                AddCommentNode(&node, text);
            break;
        }
        default: {
            DocNode& element = tree_.AddChild(node, "n" + std::to_string(++XmlNodeCount), child.name(),
                                              KindOfElement(child.name(), &node));
            AddAttributes(element, child);
            AddChildren(element, child);
        }
        }
    }
}

// The lines of the box end in "\n"; every Prompt shows line breaks in its own way.
std::string ParseErrorText(const std::string& text, int code, std::ptrdiff_t at, const std::string& reason)
{
    const std::size_t offset = std::min(static_cast<std::size_t>(std::max<std::ptrdiff_t>(at, 0)), text.size());
    const std::string_view before = std::string_view(text).substr(0, offset);
    const std::size_t lastBreak = before.rfind('\n');
    const std::size_t lineStart = lastBreak == std::string_view::npos ? 0 : lastBreak + 1;

    std::string message = "Error occured when parsing the XML file\n\n";
    message += "Error Code: " + std::to_string(code) + "\n";
    message += "Line Number: " + std::to_string(1 + std::count(before.begin(), before.end(), '\n')) + "\n";
    message += "Line Position: " + std::to_string(offset - lineStart + 1) + "\n";
    message += "Reason: " + reason + "\n";
    return message;
}

// The parser takes several elements at document level, which XML forbids: a second one is
// refused as a parse error where it starts.
bool Parse(const std::string& text, pugi::xml_document& xml, Prompt& prompt)
{
    const pugi::xml_parse_result result = xml.load_buffer(text.data(), text.size(), kParseOptions);
    if (!result) {
        prompt.Message(ParseErrorText(text, static_cast<int>(result.status), result.offset, result.description()),
                       "XML Parse Error", PromptIcon::Warning);
        return false;
    }
    const pugi::xml_node second = xml.find_child([first = xml.document_element()](pugi::xml_node node) {
        return node.type() == pugi::node_element && node != first;
    });
    if (!second)
        return true;
    // The offset is that of the name; the box points at the "<" before it.
    prompt.Message(ParseErrorText(text, static_cast<int>(pugi::status_bad_start_element), second.offset_debug() - 1,
                                  "Only one top level element is allowed"),
                   "XML Parse Error", PromptIcon::Warning);
    return false;
}

bool ReadWholeFile(const std::string& path, std::string& content, std::string& reason)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) {
        reason = std::strerror(errno);
        return false;
    }
    char buffer[65536];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file.get())) > 0)
        content.append(buffer, got);
    if (std::ferror(file.get())) {
        reason = std::strerror(errno);
        return false;
    }
    return true;
}

DocNode& CopyInto(DocTree& tree, DocNode* relative, Relationship how, const DocNode& from)
{
    DocNode& copy = tree.Add(relative, how, from.Key(), from.Text, from.Image);
    copy.Tag = from.Tag;
    copy.Expanded = from.Expanded;
    for (const auto& child : from)
        CopyInto(tree, &copy, Relationship::Child, *child);
    return copy;
}

// The first key of `added` that `tree` already holds. Only "k" keys can meet, since the
// counters of the other keys went on above those of the tree.
std::string FirstKeyTaken(const DocTree& added, const DocTree& tree)
{
    std::string taken;
    added.ForEach([&](DocNode& node) {
        if (taken.empty() && !node.Key().empty() && tree.Find(node.Key()))
            taken = node.Key();
    });
    return taken;
}

} // namespace

bool LoadXmlFile(const std::string& path, Document& doc, Prompt& prompt)
{
    std::string content;
    std::string reason;
    if (!ReadWholeFile(path, content, reason)) {
        prompt.Message("Cannot open the file " + path + ": " + reason + ".", "", PromptIcon::Warning);
        return false;
    }
    pugi::xml_document xml;
    if (!Parse(content, xml, prompt))
        return false;
    const pugi::xml_node first = xml.first_child();
    if (first.type() != pugi::node_element || Lower(first.name()) != "divxmediamanager") {
        prompt.Message("Seems that this xml file is not a valid DivX xml file", "", PromptIcon::Warning);
        return false;
    }

    DocTree tree;
    TreeBuilder builder(tree, doc.NextObjectID);
    try {
        for (pugi::xml_node child : xml.children())
            builder.AddTopLevel(child, "divx");
    } catch (const DuplicateObjectID& duplicate) {
        prompt.Message("The file holds two elements with the objectID " + duplicate.Id + ", so it cannot be opened.",
                       "", PromptIcon::Warning);
        return false;
    }
    doc.Tree = std::move(tree);
    doc.NextObjectID = builder.NextObjectID;
    return true;
}

bool LoadXmlString(const std::string& xml, Document& doc, DocNode* relative, Relationship how, Prompt& prompt)
{
    return LoadXmlStrings({{xml, relative, how}}, doc, prompt);
}

bool LoadXmlStrings(const std::vector<XmlPiece>& pieces, Document& doc, Prompt& prompt)
{
    // Read aside first, so that a refused piece adds nothing; each piece's nodes are a range of
    // the aside tree's top level.
    DocTree added;
    TreeBuilder builder(added, doc.NextObjectID);
    builder.ResumeAbove(doc.Tree);
    std::vector<std::size_t> ends;
    for (const XmlPiece& piece : pieces) {
        pugi::xml_document parsed;
        if (!Parse(piece.Xml, parsed, prompt))
            return false;
        try {
            for (pugi::xml_node child : parsed.children())
                builder.AddTopLevel(child, "");
        } catch (const DuplicateObjectID& duplicate) {
            prompt.Message("The XML holds two elements with the objectID " + duplicate.Id + ", so it cannot be added.",
                           "", PromptIcon::Warning);
            return false;
        }
        ends.push_back(added.TopLevelCount());
    }
    if (const std::string taken = FirstKeyTaken(added, doc.Tree); !taken.empty()) {
        prompt.Message("The objectID " + IdOfKey(taken) + " is already used in the project, so the XML cannot be added.",
                       "", PromptIcon::Warning);
        return false;
    }

    // Several nodes of a piece keep their order: the first goes to the place, each further one behind it.
    std::size_t i = 0;
    for (std::size_t p = 0; p < pieces.size(); ++p) {
        DocNode* place = pieces[p].Relative;
        Relationship placeHow = pieces[p].How;
        for (; i < ends[p]; ++i) {
            place = &CopyInto(doc.Tree, place, placeHow, *added.TopLevel(i));
            placeHow = Relationship::Next;
        }
    }
    doc.NextObjectID = builder.NextObjectID;
    return true;
}

} // namespace mw
