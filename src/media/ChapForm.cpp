#include "media/ChapForm.h"

#include "core/Paths.h"
#include "core/Prompt.h"
#include "core/Text.h"
#include "core/settings/clsIniFile.h"
#include "document/Document.h"
#include "document/TreeQueries.h"
#include "i18n/LangDoc.h"
#include "media/TitleNodes.h"
#include "media/mAVIDecs.h"

#include <cmath>
#include <fstream>

namespace mw {

namespace {

// The leading decimal number of a text, 0 when it has none: "1.5 min" gives 1.5.
double LeadingDecimal(std::string_view s)
{
    const std::string text = Trim(s);
    std::size_t end = 0;
    if (end < text.size() && (text[end] == '-' || text[end] == '+'))
        ++end;
    bool point = false;
    for (; end < text.size(); ++end) {
        if (text[end] == '.' && !point)
            point = true;
        else if (text[end] < '0' || text[end] > '9')
            break;
    }
    try {
        return std::stod(text.substr(0, end));
    } catch (const std::exception&) {
        return 0;
    }
}

// Part of a text from a 1-based position, shorter or empty near the end, as Mid does.
std::string Mid(const std::string& s, std::size_t from, std::size_t count)
{
    return from - 1 < s.size() ? s.substr(from - 1, count) : std::string();
}

// "hh:mm:ss.mmm" in seconds.
double RuntimeSeconds(const std::string& runtime)
{
    const std::string millis = runtime.size() >= 3 ? runtime.substr(runtime.size() - 3) : runtime;
    return LeadingDecimal(Mid(runtime, 1, 2)) * 3600 + LeadingDecimal(Mid(runtime, 4, 2)) * 60 +
           LeadingDecimal(Mid(runtime, 7, 2)) + LeadingDecimal("." + millis);
}

// A step of frames: a fraction makes it one frame longer.
long WholeStep(double step)
{
    const double whole = std::floor(step);
    return static_cast<long>(whole == step ? whole : whole + 1);
}

void Renumber(ChapForm& form)
{
    for (std::size_t i = 0; i < form.ListView1.size(); ++i)
        form.ListView1[i].Number = static_cast<int>(i) + 1;
}

// The next start the form proposes: one after the last end, or 0 for an empty list.
void ProposeStart(ChapForm& form)
{
    form.txtStartFrame = form.ListView1.empty() ? "0" : std::to_string(form.ListView1.back().End + 1);
}

bool FramesInOrder(long start, long end, Prompt& prompt)
{
    if (start < end)
        return true;
    prompt.Message("Error in frames");
    return false;
}

std::vector<std::string> SplitOn(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (;;) {
        const auto at = text.find(separator, from);
        parts.push_back(text.substr(from, at == std::string::npos ? std::string::npos : at - from));
        if (at == std::string::npos)
            return parts;
        from = at + 1;
    }
}

// A chapter as the list shows it: its translated name and its video track's frames.
ChapterRow ListedChapter(const Document& doc, const DocNode& chapter, int number)
{
    ChapterRow row;
    row.Number = number;
    if (const DocNode* lookup = doc.Tree.ObjectNode(GetPropertyInNode(chapter, "translationlookupid"))) {
        if (const DocNode* translation = ChildNamed(lookup, "Translation"))
            row.Name = GetPropertyInNode(*translation, "value");
    }
    for (const auto& track : chapter) {
        if (EqualsNoCase(track->Text, "MediaTrack") && EqualsNoCase(GetPropertyInNode(*track, "type"), "video")) {
            row.Start = static_cast<long>(LeadingNumber(GetPropertyInNode(*track, "startframe")));
            row.End = static_cast<long>(LeadingNumber(GetPropertyInNode(*track, "endframe")));
            break;
        }
    }
    return row;
}

std::string ChosenTitleText(const ChapForm& form)
{
    const int index = form.Combo1.ListIndex;
    if (index < 0 || index >= static_cast<int>(form.Combo1.Items.size()))
        return "";
    return form.Combo1.Items[static_cast<std::size_t>(index)].Text;
}

} // namespace

void LoadChapForm(ChapForm& form, const Document& doc, const std::string& settingsFile, Prompt& prompt)
{
    form.txtStepFrames = clsIniFile(settingsFile, "General").GetString("StepFrames", "30");
    form.ProjectFile = doc.ProjectFile;
    form.Combo1.Clear();
    if (!FindMediaNode(doc)) {
        prompt.Message("Can not find \"Media\" node");
        return;
    }
    for (const DocNode* title : TitleNodes(doc)) {
        const std::string id = ObjectIdOf(*title);
        const DocNode* source = MediaSourceOf(*title);
        const std::string location = source ? GetPropertyInNode(*source, "location") : "";
        form.Combo1.AddItem(id + "|" + location, static_cast<int>(LeadingNumber(id)));
    }
}

std::string ChosenTitleID(const ChapForm& form)
{
    const std::string text = ChosenTitleText(form);
    return text.substr(0, text.find('|'));
}

std::string ChosenTitleFile(const ChapForm& form)
{
    const std::string text = ChosenTitleText(form);
    if (text.empty())
        return "";
    const auto bar = text.find('|');
    return ResolveLocation(form.ProjectFile, bar == std::string::npos ? "" : text.substr(bar + 1));
}

bool LoadChosenTitle(ChapForm& form, Prompt& prompt)
{
    form.lstTracks.clear();
    form.lblRuntime.clear();
    form.lblEndFrame = 0;
    if (!LoadStreamsToListView(ChosenTitleFile(form), form.lstTracks, true, form.Fps, prompt))
        return false;
    for (const TrackRow& row : form.lstTracks) {
        if (!EqualsNoCase(row.Kind, "Video"))
            continue;
        const auto length = row.Info.find("Length:");
        if (row.Info.find("An error") != std::string::npos)
            form.lblRuntime = "Error";
        else if (length != std::string::npos)
            form.lblRuntime = Trim(row.Info.substr(length + 7));
        form.lblEndFrame = static_cast<long>(LeadingNumber(row.EndFrame));
        break;
    }
    return true;
}

bool Combo1_Click(ChapForm& form, const Document& doc, Prompt& prompt)
{
    const bool read = LoadChosenTitle(form, prompt);
    form.ListView1.clear();
    form.ListView1Index = -1;
    const DocNode* title = doc.Tree.ObjectNode(ChosenTitleID(form));
    if (!title)
        return read;
    for (const auto& child : *title) {
        if (child->HasChildren() && EqualsNoCase(child->Text, "Chapter"))
            form.ListView1.push_back(
                ListedChapter(doc, *child, static_cast<int>(form.ListView1.size()) + 1));
    }
    return read;
}

void CalcChapters(ChapForm& form, Prompt& prompt)
{
    long start = 0;
    long length = 0;
    long width = 0;
    long height = 0;
    float fps = 0;
    GetStreamByType(ChosenTitleFile(form), "video", start, length, fps, width, height, prompt);
    const double seconds = RuntimeSeconds(form.lblRuntime);

    if (form.Mode == ChapMode::PerMinutes) {
        const double minutes = LeadingDecimal(form.txtMinutes);
        if (minutes > 0) {
            const std::string step = std::to_string(WholeStep(minutes * 60 * fps));
            const auto count = static_cast<long long>(std::floor(seconds / (minutes * 60)));
            form.lblCountChapters = {std::to_string(count) + " chapter(s) every " + step + " frames", step};
        } else {
            form.lblCountChapters = {"?", ""};
        }
    } else if (form.Mode == ChapMode::Count) {
        const double count = LeadingDecimal(form.txtChapters);
        if (count > 0) {
            const std::string step = std::to_string(WholeStep(length / count));
            form.lblCountTime = {"every " + step + " frames", step};
        } else {
            form.lblCountTime = {"?", ""};
        }
    }
}

bool AddChapterRow(ChapForm& form, Prompt& prompt)
{
    const auto start = static_cast<long>(LeadingNumber(form.txtStartFrame));
    const auto end = static_cast<long>(LeadingNumber(form.txtEndFrame));
    if (!FramesInOrder(start, end, prompt))
        return false;
    if (!form.ListView1.empty())
        form.ListView1.back().End = start - 1;
    form.ListView1.push_back({static_cast<int>(form.ListView1.size()) + 1, start, end, ""});
    ProposeStart(form);
    return true;
}

bool InsertChapterRow(ChapForm& form, Prompt& prompt)
{
    const int selected = form.ListView1Index;
    if (selected < 0 || selected >= static_cast<int>(form.ListView1.size()))
        return false;
    const auto start = static_cast<long>(LeadingNumber(form.txtStartFrame));
    const auto end = static_cast<long>(LeadingNumber(form.txtEndFrame));
    if (!FramesInOrder(start, end, prompt))
        return false;
    const auto at = static_cast<std::size_t>(selected);
    if (start < form.ListView1[at].Start) {
        prompt.Message("The start frame is smaller from the last one");
        return false;
    }
    if (at + 1 < form.ListView1.size() && start > form.ListView1[at + 1].Start) {
        prompt.Message("The start frame is bigger from the next one");
        return false;
    }
    form.ListView1[at].End = start - 1;
    form.ListView1.insert(form.ListView1.begin() + selected + 1, {0, start, end, ""});
    Renumber(form);
    form.ListView1Index = selected + 1;
    ProposeStart(form);
    return true;
}

void DeleteChapterRow(ChapForm& form)
{
    if (form.ListView1Index < 0 || form.ListView1Index >= static_cast<int>(form.ListView1.size()))
        return;
    form.ListView1.erase(form.ListView1.begin() + form.ListView1Index);
    form.ListView1Index = -1;
    Renumber(form);
    ProposeStart(form);
}

void NextKeyFrameEnd(const ChapForm& form, std::string& field, Prompt& prompt)
{
    bool found = false;
    const long key = FindNextKeyFrame(ChosenTitleFile(form), static_cast<long>(LeadingNumber(field)) + 2, prompt, &found);
    if (found && key > 0)
        field = std::to_string(key - 1);
}

void ImportChaptersFromTxt(ChapForm& form, const std::string& lastFolder, const LangDoc& lang, Prompt& prompt)
{
    if (ChosenTitleID(form).empty()) {
        prompt.Message("Please select a title");
        return;
    }
    FileDialogRequest request;
    request.Filter = "*.txt|*.txt";
    request.InitialDir = lastFolder;
    const std::vector<std::string> files = prompt.OpenFiles(request);
    if (!files.empty() && !files.front().empty())
        ImportChapterFile(form, files.front(), lang, prompt);
}

bool ImportChapterFile(ChapForm& form, const std::string& path, const LangDoc& lang, Prompt& prompt)
{
    form.List1.clear();
    std::ifstream in(path, std::ios::binary);
    std::string line;
    bool inChapters = false;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!inChapters) {
            inChapters = Upper(line) == "[CHAPTERS]";
            continue;
        }
        const std::vector<std::string> parts = SplitOn(line, ':');
        if (parts.size() != 3)
            continue;
        const double seconds =
            LeadingDecimal(parts[0]) * 3600 + LeadingDecimal(parts[1]) * 60 + LeadingDecimal(parts[2]);
        form.List1.push_back(static_cast<long>(std::floor(seconds * form.Fps)));
    }
    if (form.List1.empty()) {
        form.Imported = false;
        prompt.Message(FormTexts(lang, "frmChap")(9, "Can not find any chapter"));
        return false;
    }
    form.lblCountTime.Caption = "from " + path + " file";
    form.Imported = true;
    form.txtChapters = std::to_string(form.List1.size() + 1);
    return true;
}

void ClearImportedChapters(ChapForm& form)
{
    form.List1.clear();
    form.Imported = false;
}

bool AcceptChapForm(ChapForm& form, const std::string& settingsFile, const LangDoc& lang, Prompt& prompt)
{
    if (form.Mode == ChapMode::Manual && form.ListView1.empty()) {
        prompt.Message(FormTexts(lang, "frmChap")(3, "Add at least 1 chapter"));
        return false;
    }
    if (!form.chkAll && ChosenTitleID(form).empty())
        return false;
    clsIniFile(settingsFile, "General").PutString("StepFrames", form.txtStepFrames);
    form.Accepted = true;
    return true;
}

} // namespace mw
