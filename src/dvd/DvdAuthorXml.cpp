#include "dvd/DvdAuthorXml.h"

#include <pugixml.hpp>

#include <cmath>
#include <cstdio>
#include <sstream>

namespace mw {

namespace fs = std::filesystem;

namespace {

std::string MenuStem(int language, int menu)
{
    return "menu-" + std::to_string(language) + "-" + std::to_string(menu);
}

std::string XmlText(const pugi::xml_document& doc)
{
    std::ostringstream out;
    doc.save(out, "  ");
    return out.str();
}

void Commands(pugi::xml_node pgc, const char* name, const std::string& commands)
{
    if (!commands.empty())
        pgc.append_child(name).text().set(commands.c_str());
}

void Video(pugi::xml_node group, TvStandard standard)
{
    pugi::xml_node video = group.append_child("video");
    video.append_attribute("format") = StandardName(standard);
    video.append_attribute("aspect") = "4:3";
}

void MenuPgc(pugi::xml_node menus, const DvdMenu& menu, const fs::path& file)
{
    pugi::xml_node pgc = menus.append_child("pgc");
    std::string entries;
    for (const std::string& entry : menu.Entries)
        entries += (entries.empty() ? "" : " ") + entry;
    if (!entries.empty())
        pgc.append_attribute("entry") = entries.c_str();
    Commands(pgc, "pre", menu.Pre);
    pugi::xml_node vob = pgc.append_child("vob");
    vob.append_attribute("file") = file.c_str();
    if (menu.Still && menu.Post.empty())
        vob.append_attribute("pause") = "inf";
    for (const DvdButton& button : menu.Buttons) {
        pugi::xml_node node = pgc.append_child("button");
        node.append_attribute("name") = button.Name.c_str();
        node.text().set(button.Command.c_str());
    }
    Commands(pgc, "post", menu.Post);
}

} // namespace

fs::path DvdFiles::MenuVideo(int language, int menu) const
{
    return Folder / (MenuStem(language, menu) + ".mpg");
}

fs::path DvdFiles::MenuButtons(int language, int menu) const
{
    return Folder / (MenuStem(language, menu) + "-buttons.mpg");
}

fs::path DvdFiles::Highlight(int language, int menu) const
{
    return Folder / (MenuStem(language, menu) + "-highlight.png");
}

fs::path DvdFiles::Select(int language, int menu) const
{
    return Folder / (MenuStem(language, menu) + "-select.png");
}

fs::path DvdFiles::SpumuxXml(int language, int menu) const
{
    return Folder / (MenuStem(language, menu) + "-spumux.xml");
}

fs::path DvdFiles::Title(int title) const
{
    return Folder / ("title-" + std::to_string(title) + ".mpg");
}

fs::path DvdFiles::AuthorXml() const
{
    return Folder / "dvdauthor.xml";
}

std::string DvdTime(long frames, double fps)
{
    const long millis = std::lround(double(std::max(0L, frames)) * 1000.0 / (fps > 0 ? fps : 25.0));
    char text[32];
    std::snprintf(text, sizeof text, "%ld:%02ld:%02ld.%03ld", millis / 3600000, millis / 60000 % 60,
                  millis / 1000 % 60, millis % 1000);
    return text;
}

std::string DvdAuthorXml(const DvdPlan& plan, const DvdFiles& files, const fs::path& dest)
{
    pugi::xml_document doc;
    pugi::xml_node root = doc.append_child("dvdauthor");
    root.append_attribute("dest") = dest.c_str();
    root.append_attribute("jumppad") = "yes";

    pugi::xml_node vmgm = root.append_child("vmgm");
    Commands(vmgm, "fpc", plan.FirstPlay);
    if (!plan.TitleKeyMenu.empty()) {
        pugi::xml_node menus = vmgm.append_child("menus");
        Video(menus, plan.Standard);
        pugi::xml_node pgc = menus.append_child("pgc");
        pgc.append_attribute("entry") = "title";
        Commands(pgc, "pre", plan.TitleKeyMenu);
    }

    pugi::xml_node titleset = root.append_child("titleset");
    for (std::size_t l = 0; l < plan.Languages.size(); ++l) {
        const DvdLanguage& language = plan.Languages[l];
        pugi::xml_node menus = titleset.append_child("menus");
        menus.append_attribute("lang") = language.Code.c_str();
        Video(menus, plan.Standard);
        for (const DvdMenu& menu : language.Menus) {
            const fs::path file = menu.Buttons.empty() ? files.MenuVideo(int(l), menu.Number)
                                                       : files.MenuButtons(int(l), menu.Number);
            MenuPgc(menus, menu, file);
        }
    }
    pugi::xml_node titles = titleset.append_child("titles");
    Video(titles, plan.Standard);
    for (const DvdTitle& title : plan.Titles) {
        pugi::xml_node pgc = titles.append_child("pgc");
        Commands(pgc, "pre", title.Pre);
        pugi::xml_node vob = pgc.append_child("vob");
        vob.append_attribute("file") = files.Title(title.Number).c_str();
        std::string chapters;
        for (long start : DvdChapterFrames(title, plan.Standard))
            chapters += (chapters.empty() ? "" : ",") + DvdTime(start, DvdFrameRate(plan.Standard).Fps());
        vob.append_attribute("chapters") = chapters.c_str();
        Commands(pgc, "post", title.Post);
    }
    return XmlText(doc);
}

std::string SpumuxXml(const DvdPlan& plan, const DvdMenu& menu, const fs::path& highlight, const fs::path& select)
{
    pugi::xml_document doc;
    pugi::xml_node root = doc.append_child("subpictures");
    root.append_attribute("format") = plan.Standard == TvStandard::Pal ? "PAL" : "NTSC";
    pugi::xml_node spu = root.append_child("stream").append_child("spu");
    spu.append_attribute("start") = "00:00:00.00";
    spu.append_attribute("force") = "yes";
    spu.append_attribute("highlight") = highlight.c_str();
    spu.append_attribute("select") = select.c_str();
    constexpr std::array<const char*, 4> directions = {"up", "down", "left", "right"};
    for (const DvdButton& button : menu.Buttons) {
        pugi::xml_node node = spu.append_child("button");
        node.append_attribute("name") = button.Name.c_str();
        node.append_attribute("x0") = button.Area.Left;
        node.append_attribute("y0") = button.Area.Top;
        node.append_attribute("x1") = button.Area.Left + button.Area.Width;
        node.append_attribute("y1") = button.Area.Top + button.Area.Height;
        for (std::size_t d = 0; d < directions.size(); ++d)
            node.append_attribute(directions[d]) = button.Neighbours[d].c_str();
    }
    return XmlText(doc);
}

} // namespace mw
