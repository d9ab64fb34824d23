#include "document/NormalizeFile.h"

#include "core/Text.h"
#include "document/CheckForErrors.h"
#include "document/ExtraInfo.h"
#include "document/ObjectIds.h"
#include "document/TreeQueries.h"

#include <string>

namespace mw {

namespace {

constexpr const char* kForm = "Form1";

// The element that holds the key a new number would take while it keeps its own: its objectID
// row was changed by hand, so its key names another number. Renaming would then fail halfway.
const DocNode* KeyInTheWay(const DocTree& tree, const IdSet& ids)
{
    for (std::size_t i = 0; i < ids.Count(); ++i) {
        const bool firstOfItsNumber = i == 0 || ids.Entry(i - 1) != ids.Entry(i);
        if (!firstOfItsNumber || !tree.Find("k" + std::to_string(LeadingNumber(ids.Entry(i)))))
            continue;
        const long long number = static_cast<long long>(i) + 1;
        if (const DocNode* holder = tree.Find("k" + std::to_string(number)); holder && ids.Find(number) < 0)
            return holder;
    }
    return nullptr;
}

} // namespace

void ParceToUpdate(DocNode* first, const IdSet& ids, const LangDoc& lang, Prompt& prompt, long& missingCount)
{
    const FormTexts text(lang, kForm);
    // The next number for a reference that is not in the set.
    auto numberForMissing = [&] {
        ++missingCount;
        return static_cast<long>(ids.Count()) + missingCount;
    };

    ReferenceVisitor visit;
    visit.Row = [&](DocNode& row) {
        const long long old = LeadingNumber(RowValue(row.Text));
        const long position = ids.Find(IdSet::EntryOf(RowValue(row.Text)));
        long number = position + 1;
        if (position < 0) {
            EnsureVisible(row);
            number = numberForMissing();
            prompt.Message(text(30, "Error while normalize at ID ") + std::to_string(old) +
                           text(31, ". New ID for this will be ") + std::to_string(number));
        }
        // Only the value changes; the name keeps its spelling.
        row.Text = row.Text.substr(0, row.Text.find('=') + 1) + " " + std::to_string(number);
    };
    visit.ExtraInfo = [&](DocNode& element, pugi::xml_document& extraInfo) {
        for (const char* name : kExtraInfoReferences) {
            pugi::xml_attribute attr = extraInfo.document_element().attribute(name);
            if (!attr || !IsReferenceValue(attr.value()))
                continue;
            const long position = ids.Find(IdSet::EntryOf(attr.value()));
            long number = position + 1;
            if (position < 0) {
                number = numberForMissing();
                prompt.Message(text(30, "Error while normalize at ID ") + attr.value() +
                               text(29, " in extra info used by ") + element.Text +
                               text(31, ". New ID for this will be ") + std::to_string(number));
            }
            attr.set_value(std::to_string(number).c_str());
        }
        element.Tag = ExtraInfoText(extraInfo);
    };
    WalkReferences(first, visit);
}

NormalizeResult NormalizeFile(Document& doc, const LangDoc& lang, Prompt& prompt)
{
    NormalizeResult result;
    DocNode* root = doc.Tree.Root();
    if (!root)
        return result;

    IdSet ids;
    LoadIDs(root, ids);
    if (const DocNode* holder = KeyInTheWay(doc.Tree, ids)) {
        prompt.Message("The objects cannot be renumbered: " + holder->Text + " " + IdOfKey(holder->Key()) +
                           " has the objectID " + GetPropertyInNode(*holder, "objectID") + ". Nothing was changed.",
                       "", PromptIcon::Warning);
        return result;
    }
    ParceToUpdate(root, ids, lang, prompt, result.MissingCount);

    // Two passes, so that no new key meets an old one that has not moved yet.
    for (std::size_t i = 0; i < ids.Count(); ++i) {
        const std::string old = std::to_string(LeadingNumber(ids.Entry(i)));
        if (DocNode* node = doc.Tree.Find("k" + old))
            doc.Tree.SetKey(*node, "nk" + old);
    }
    for (std::size_t i = 0; i < ids.Count(); ++i) {
        const long long old = LeadingNumber(ids.Entry(i));
        const long number = static_cast<long>(i) + 1;
        if (DocNode* node = doc.Tree.Find("nk" + std::to_string(old)))
            doc.Tree.SetKey(*node, "k" + std::to_string(number));
        // References were rewritten to the first of equal entries.
        result.NewNumber.emplace(old, number);
    }

    LoadMediaTracsFromMenuTracs(doc, doc.MenuTracks);
    doc.NextObjectID = static_cast<long>(ids.Count()) + result.MissingCount + 1;
    result.Changed = true;
    prompt.Message(FormTexts(lang, kForm)(25, "Normalize complete"));
    return result;
}

} // namespace mw
