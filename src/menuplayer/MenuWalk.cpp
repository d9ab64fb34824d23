#include "menuplayer/MenuWalk.h"

#include "core/AtomicFile.h"
#include "document/TreeQueries.h"
#include "media/TitleNodes.h"
#include "menuplayer/MenuGraph.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <deque>
#include <filesystem>
#include <set>
#include <utility>

namespace mw {

namespace {

constexpr int kDotTimeoutMs = 60000;

// Where an action list leads: the menu it shows (with the button chosen for it) or the title it
// plays; `same` is the menu the list belongs to.
struct Lead {
    std::string Menu;
    std::string Button;
    const ActionStep* Play = nullptr;
};

std::vector<Lead> LeadsOf(const ResolvedActions& list, const std::string& same)
{
    std::vector<Lead> leads;
    std::string shown = same;
    for (const ActionStep& step : list.Steps) {
        if (step.What == ActionStep::Kind::GoToMenu) {
            shown = step.Target;
            leads.push_back({step.Target, {}});
        } else if (step.What == ActionStep::Kind::GoToButton) {
            leads.push_back({shown, step.Target});
        } else if (step.What == ActionStep::Kind::Play || step.What == ActionStep::Kind::Resume) {
            leads.push_back({{}, {}, &step});
        }
    }
    return leads;
}

void Append(std::vector<std::string>& to, const std::vector<std::string>& from)
{
    to.insert(to.end(), from.begin(), from.end());
}

// The dead ends of one button: its arrows and its list.
std::vector<std::string> ButtonDeadEnds(const MenuGraph& graph, const DocNode& menu, const DocNode& button,
                                        std::vector<std::string>* neighbours = nullptr)
{
    std::vector<std::string> deadEnds;
    for (const Direction d : {Direction::Up, Direction::Down, Direction::Left, Direction::Right}) {
        std::string deadEnd;
        const std::string next = graph.Neighbour(menu, button, d, deadEnd);
        if (!deadEnd.empty())
            deadEnds.push_back(deadEnd);
        if (neighbours && !next.empty())
            neighbours->push_back(next);
    }
    return deadEnds;
}

// The dead ends of a menu of its own, before its buttons: its background, its start button,
// its enter list and being stuck.
std::vector<std::string> MenuDeadEnds(const MenuGraph& graph, const DocNode& menu, std::string& startButton)
{
    std::vector<std::string> deadEnds;
    graph.Background(menu, deadEnds);
    startButton = graph.StartButton(menu, deadEnds);
    Append(deadEnds, graph.Actions(menu, menu, "enterAction").DeadEnds);
    if (const std::string stuck = graph.Stuck(menu); !stuck.empty())
        deadEnds.push_back(stuck);
    return deadEnds;
}

std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        quoted += c == '\n' ? std::string("\\n") : std::string(1, c);
    }
    return quoted + '"';
}

} // namespace

bool WalkMenus(const Document& doc, const std::string& languageCode, WalkReport& report, std::string& error)
{
    const MenuGraph graph(doc);
    const DocNode* set = graph.LanguageSet(languageCode, &error);
    if (!set)
        return false;
    report = {};
    report.LanguageCode = GetPropertyInNode(*set, "languageCode");

    // Work items: a menu to enter (no button) or a button of a menu to select.
    std::deque<std::pair<std::string, std::string>> work;
    const std::string start = graph.StartMenu(*set, report.DeadEnds);
    std::string deadEnd;
    const std::string root = graph.KeyMenu(*set, "menu", deadEnd);
    if (!deadEnd.empty())
        report.DeadEnds.push_back(deadEnd);
    // The title key falls back on the root menu, so it is no dead end of its own.
    for (const std::string& menu : {start, root, graph.KeyMenu(*set, "title", deadEnd)}) {
        if (!menu.empty())
            work.push_back({menu, {}});
    }

    std::set<std::string> menusSeen;
    std::set<std::string> buttonsSeen;
    const auto follow = [&](const ResolvedActions& list, const std::string& menuID) {
        Append(report.DeadEnds, list.DeadEnds);
        for (const Lead& lead : LeadsOf(list, menuID)) {
            if (!lead.Menu.empty())
                work.push_back({lead.Menu, lead.Button});
        }
    };
    while (!work.empty()) {
        const auto [menuID, buttonID] = work.front();
        work.pop_front();
        const DocNode* menu = graph.Menu(menuID);
        if (!menu)
            continue;
        if (menusSeen.insert(menuID).second) {
            report.Reached.push_back(menuID);
            std::string first;
            Append(report.DeadEnds, MenuDeadEnds(graph, *menu, first));
            follow(graph.Actions(*menu, *menu, "exitAction"), menuID);
            if (!first.empty())
                work.push_back({menuID, first});
        }
        const DocNode* button = buttonID.empty() ? nullptr : graph.Button(*menu, buttonID);
        if (!button || !buttonsSeen.insert(buttonID).second)
            continue;
        std::vector<std::string> neighbours;
        Append(report.DeadEnds, ButtonDeadEnds(graph, *menu, *button, &neighbours));
        for (const std::string& next : neighbours)
            work.push_back({menuID, next});
        follow(graph.Actions(*menu, *button, "selectAction"), menuID);
    }

    for (const DocNode* menu : graph.Menus(*set)) {
        if (!menusSeen.contains(ObjectIdOf(*menu)))
            report.UnreachedMenus.push_back(graph.MenuLabel(ObjectIdOf(*menu)));
    }
    for (const std::string& menuID : report.Reached) {
        for (const DocNode* button : graph.Buttons(*graph.Menu(menuID))) {
            if (!buttonsSeen.contains(ObjectIdOf(*button)))
                report.UnreachedButtons.push_back("button " + ObjectIdOf(*button) + " of " + graph.MenuLabel(menuID));
        }
    }
    return true;
}

std::string WalkText(const WalkReport& report)
{
    std::string text = "Language set " + report.LanguageCode + ": " + std::to_string(report.Reached.size()) +
                       " menus reached\n";
    const auto section = [&text](const char* heading, const std::vector<std::string>& lines) {
        if (lines.empty())
            return;
        text += heading;
        for (const std::string& line : lines)
            text += "  " + line + "\n";
    };
    section("Dead ends:\n", report.DeadEnds);
    section("Menus no path reaches:\n", report.UnreachedMenus);
    section("Buttons no path reaches:\n", report.UnreachedButtons);
    if (report.DeadEnds.empty())
        text += "No dead ends.\n";
    return text;
}

std::string MenuMapDot(const Document& doc)
{
    const MenuGraph graph(doc);
    std::string dot = "digraph menus {\n  rankdir=LR;\n  node [shape=box, style=rounded, fontname=\"Sans\"];\n"
                      "  edge [fontname=\"Sans\", fontsize=10];\n";
    std::string edges;
    std::set<std::string> titles;
    const auto edgesOf = [&](const ResolvedActions& list, const std::string& menuID, const std::string& label,
                             const char* style) {
        for (const Lead& lead : LeadsOf(list, menuID)) {
            std::string to = "m" + lead.Menu;
            std::string text = label;
            if (lead.Play) {
                titles.insert(lead.Play->TitleID);
                to = "t" + lead.Play->TitleID;
                if (lead.Play->Target != lead.Play->TitleID)
                    text += (text.empty() ? "" : ": ") + std::string("chapter ") + lead.Play->Target;
            } else if (!lead.Button.empty()) {
                text += (text.empty() ? "" : ": ") + std::string("button ") + lead.Button;
            }
            if (lead.Menu == menuID && !lead.Play && !lead.Button.empty())
                continue; // a move between buttons of the same menu
            edges += "  m" + menuID + " -> " + to + " [label=" + Quoted(text) + style + "];\n";
        }
    };

    const DocNode* root = doc.Tree.Root();
    for (const DocNode* set : root ? graph.LanguageSets(*root) : std::vector<const DocNode*>()) {
        const std::string setID = ObjectIdOf(*set);
        dot += "  subgraph cluster_" + setID + " {\n    label=" +
               Quoted("language " + GetPropertyInNode(*set, "languageCode")) + ";\n";
        dot += "    s" + setID + " [shape=circle, label=\"start\"];\n";
        std::vector<std::string> unused;
        if (const std::string start = graph.StartMenu(*set, unused); !start.empty())
            edges += "  s" + setID + " -> m" + start + ";\n";
        for (const DocNode* menu : graph.Menus(*set)) {
            const std::string id = ObjectIdOf(*menu);
            std::string first;
            std::vector<std::string> deadEnds = MenuDeadEnds(graph, *menu, first);
            const ResolvedActions exit = graph.Actions(*menu, *menu, "exitAction");
            Append(deadEnds, exit.DeadEnds);
            edgesOf(exit, id, "exit", ", style=dashed");
            for (const DocNode* button : graph.Buttons(*menu)) {
                Append(deadEnds, ButtonDeadEnds(graph, *menu, *button));
                const ResolvedActions select = graph.Actions(*menu, *button, "selectAction");
                Append(deadEnds, select.DeadEnds);
                edgesOf(select, id, "button " + ObjectIdOf(*button), "");
            }
            const std::string type = GetPropertyInNode(*menu, "menuType");
            std::string label = graph.MenuLabel(id) + (type.empty() ? "" : "\n" + type);
            if (!deadEnds.empty())
                label += "\n" + std::to_string(deadEnds.size()) + " dead end" + (deadEnds.size() == 1 ? "" : "s");
            dot += "    m" + id + " [label=" + Quoted(label) + (deadEnds.empty() ? "" : ", color=red, fontcolor=red") +
                   "];\n";
        }
        dot += "  }\n";
    }
    for (const std::string& title : titles) {
        const DocNode* node = doc.Tree.ObjectNode(title);
        const std::string file = node ? std::filesystem::path(TitleFile(doc, *node)).filename().string() : std::string();
        dot += "  t" + title + " [shape=box, style=filled, fillcolor=\"#e8e8e8\", label=" +
               Quoted("title " + title + (file.empty() ? "" : "\n" + file)) + "];\n";
    }
    return dot + edges + "}\n";
}

bool WriteMenuMap(const Document& doc, const std::string& svgFile, std::string& error, const std::string& dot)
{
    QString program = QString::fromStdString(dot);
    if (dot.find('/') == std::string::npos)
        program = QStandardPaths::findExecutable(program);
    else if (!QFileInfo(program).isExecutable())
        program.clear();
    if (program.isEmpty()) {
        error = "Graphviz's dot was not found; install the package " + std::string(kGraphvizPackage);
        return false;
    }
    QProcess process;
    process.start(program, {"-Tsvg"});
    if (!process.waitForStarted(kDotTimeoutMs)) {
        error = "Graphviz's dot could not be started (" + program.toStdString() + "); install the package " +
                kGraphvizPackage;
        return false;
    }
    const std::string graph = MenuMapDot(doc);
    process.write(graph.data(), qint64(graph.size()));
    process.closeWriteChannel();
    if (!process.waitForFinished(kDotTimeoutMs) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0) {
        process.kill();
        error = "dot failed: " + process.readAllStandardError().trimmed().toStdString();
        return false;
    }
    const QByteArray svg = process.readAllStandardOutput();
    return WriteFileAtomically(svgFile, std::string_view(svg.constData(), std::size_t(svg.size())), error);
}

} // namespace mw
