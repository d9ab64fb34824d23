#include "document/ObjectIds.h"

#include "core/Text.h"
#include "document/Document.h"
#include "document/ExtraInfo.h"
#include "document/TreeQueries.h"

namespace mw {

long TakeObjectID(Document& doc) { return doc.NextObjectID++; }

std::string IdOfKey(std::string_view key)
{
    return key.size() > 1 && key[0] == 'k' ? std::string(key.substr(1)) : std::string();
}

bool RemoveReferenced(DocTree& tree, const std::string& id, std::string_view element, const DocNode* inUse)
{
    DocNode* found = id.empty() ? nullptr : tree.ObjectNode(id);
    if (!found || !EqualsNoCase(found->Text, element))
        return false;
    for (const DocNode* node = inUse; node; node = node->Parent()) {
        if (node == found)
            return false;
    }
    tree.Remove(*found);
    return true;
}

bool IsReferenceName(std::string_view name)
{
    const std::string lowered = Lower(RowName(std::string(name)));
    return lowered.ends_with("action") || (lowered.ends_with("id") && !lowered.ends_with("trackid"));
}

bool IsReferenceValue(std::string_view value)
{
    const std::string lowered = Lower(Trim(value));
    return !lowered.empty() && lowered != "none";
}

bool IsReferenceRow(std::string_view text)
{
    const std::string row(text);
    return row.find('=') != std::string::npos && IsReferenceName(row) && IsReferenceValue(RowValue(row));
}

namespace {

void VisitNode(DocNode& node, const ReferenceVisitor& visit)
{
    if (!node.HasChildren()) {
        if (IsReferenceRow(node.Text))
            visit.Row(node);
        return;
    }
    if (!node.Tag.empty()) {
        pugi::xml_document extraInfo;
        if (ParseExtraInfo(node.Tag, extraInfo))
            visit.ExtraInfo(node, extraInfo);
    }
    for (const auto& child : node)
        VisitNode(*child, visit);
}

} // namespace

void WalkReferences(DocNode* first, const ReferenceVisitor& visit)
{
    for (DocNode* node = first; node; node = node->Next())
        VisitNode(*node, visit);
}

} // namespace mw
