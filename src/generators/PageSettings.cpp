#include "generators/PageSettings.h"

#include "core/settings/clsIniFile.h"

#include <cstdint>
#include <initializer_list>
#include <utility>
#include <string>

namespace mw {

namespace {

// Walks every key of a section with the field it belongs to, so that reading and writing
// share one list.
template <class Visit>
void ForEachKey(GeneratorKind kind, PageDesign& d, Visit&& visit)
{
    visit("MenuName", d.MenuName);
    const auto font = [&visit](const std::string& suffix, FontGroup& group, bool shadow) {
        visit("FontName" + suffix, group.Name);
        visit("FontBold" + suffix, group.Bold);
        visit("FontItalic" + suffix, group.Italic);
        visit("FontSize" + suffix, group.Size);
        visit("FontCharSet" + suffix, group.CharSet);
        visit("FontColor" + suffix, group.Color);
        if (shadow) {
            visit("TextShadowColor" + suffix, group.ShadowColor);
            visit("TextShadowDepth" + suffix, group.ShadowDepth);
        }
    };
    font("", d.Captions, false);
    font("2", d.Labels, true);
    font("3", d.Free, true);
    visit("Picture", d.Picture);
    visit("UseThisSound", d.UseThisSound);

    const auto labels = [&visit, &d](std::initializer_list<std::pair<const char*, PageLabel PageDesign::*>> list) {
        for (const auto& [name, member] : list) {
            PageLabel& l = d.*member;
            const std::string n = name;
            visit(n + "Text", l.Caption);
            visit(n + "Picture", l.Picture);
            visit(n + "Left", l.Left);
            visit(n + "Top", l.Top);
            visit(n + "Width", l.Width);
            visit(n + "Height", l.Height);
        }
    };
    if (kind == GeneratorKind::SetupMenu) {
        visit("AudioButtonLeft", d.AudioButtonLeft);
        visit("AudioButtonTop", d.AudioButtonTop);
        visit("SubtitleButtonLeft", d.SubtitleButtonLeft);
        visit("SubtitleButtonTop", d.SubtitleButtonTop);
        labels({{"Audio", &PageDesign::Audio}, {"Subtitle", &PageDesign::Subtitle}, {"Main", &PageDesign::Main}});
        return;
    }
    visit("WhatOverlay", d.WhatOverlay);
    visit("ButtonPicture", d.ButtonPicture);
    labels({{"Title", &PageDesign::Title},
            {"Main", &PageDesign::Main},
            {"Previous", &PageDesign::Previous},
            {"Next", &PageDesign::Next}});
    if (kind == GeneratorKind::ChaptersMenu) {
        labels({{"Setup", &PageDesign::Setup}});
        visit("Animation", d.Animation);
    }
}

struct Reader {
    const clsIniFile& ini;
    void operator()(const std::string& key, std::string& value) const { value = ini.GetString(key, value); }
    void operator()(const std::string& key, int& value) const { value = static_cast<int>(ini.GetInt(key, value)); }
    // Booleans are "-1" and "0"; any number but 0 is true.
    void operator()(const std::string& key, bool& value) const { value = ini.GetInt(key, value ? -1 : 0) != 0; }
    void operator()(const std::string& key, std::uint32_t& value) const
    {
        value = static_cast<std::uint32_t>(ini.GetInt(key, static_cast<long>(value)));
    }
};

struct Writer {
    clsIniFile& ini;
    bool ok = true;
    void operator()(const std::string& key, std::string& value) { ok &= ini.PutString(key, value); }
    void operator()(const std::string& key, int& value) { ok &= ini.PutInt(key, value); }
    void operator()(const std::string& key, bool& value) { ok &= ini.PutString(key, value ? "-1" : "0"); }
    void operator()(const std::string& key, std::uint32_t& value) { ok &= ini.PutInt(key, static_cast<long>(value)); }
};

PageLabel Label(std::string caption, int left, int top, int width, int height)
{
    return PageLabel{.Caption = std::move(caption), .Left = left, .Top = top, .Width = width, .Height = height};
}

} // namespace

const char* SectionName(GeneratorKind kind)
{
    switch (kind) {
    case GeneratorKind::TitleMenu:
        return "TitleMenu";
    case GeneratorKind::ChaptersMenu:
        return "ChaptersMenu";
    case GeneratorKind::SetupMenu:
        return "SetupMenu";
    }
    return "";
}

PageDesign StartDesign(GeneratorKind kind, int width, int height)
{
    PageDesign d;
    const int bottom = height - 70;
    const int middle = width / 2;
    d.Main = Label("Main menu", kind == GeneratorKind::SetupMenu ? middle - 80 : middle - 150, bottom, 160, 40);
    if (kind == GeneratorKind::SetupMenu) {
        d.Audio = Label("Audio", 40, 30, middle - 60, 40);
        d.Subtitle = Label("Subtitles", middle + 20, 30, middle - 60, 40);
        d.AudioButtonLeft = d.Audio.Left;
        d.AudioButtonTop = d.Audio.Top + 60;
        d.SubtitleButtonLeft = d.Subtitle.Left;
        d.SubtitleButtonTop = d.Subtitle.Top + 60;
        return d;
    }
    d.Title = Label(kind == GeneratorKind::TitleMenu ? "Select title" : "Select chapter", width / 4, 10, middle, 40);
    d.Previous = Label("<<", 30, bottom, 60, 40);
    d.Next = Label(">>", width - 90, bottom, 60, 40);
    if (kind == GeneratorKind::ChaptersMenu)
        d.Setup = Label("Setup", middle + 10, bottom, 140, 40);
    return d;
}

PageDesign LoadDefValues(GeneratorKind kind, const std::filesystem::path& settingsFile,
                         const std::filesystem::path& programFolder, const std::string& menuName, int width,
                         int height)
{
    PageDesign d = StartDesign(kind, width, height);
    d.MenuName = menuName;
    d.Picture = (programFolder / "Templates" / "Pictures" / "sky.jpg").string();
    if (kind != GeneratorKind::SetupMenu)
        d.ButtonPicture = (programFolder / "frames" / "DVD_Button_2.gif").string();
    const clsIniFile ini(settingsFile.string(), SectionName(kind));
    ForEachKey(kind, d, Reader{ini});
    return d;
}

bool SaveDefValues(GeneratorKind kind, const PageDesign& design, const std::filesystem::path& settingsFile)
{
    clsIniFile ini(settingsFile.string(), SectionName(kind));
    PageDesign d = design;
    Writer writer{ini};
    ForEachKey(kind, d, writer);
    return writer.ok;
}

} // namespace mw
