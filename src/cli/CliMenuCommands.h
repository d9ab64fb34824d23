#pragma once

#include "cli/CliCommands.h"

#include <optional>
#include <string>
#include <vector>

namespace mw {

// The options that only add-menu, add-button or set-overlay take.
struct MenuCliOptions {
    std::optional<std::string> Video;    // --video FILE
    std::vector<std::string> Pictures;   // --picture PIC...
    std::optional<std::string> FromMenu; // --from-menu MENU_ID
    std::optional<std::string> Start;    // --start N
    std::optional<std::string> End;      // --end N
    std::optional<std::string> Type;     // --type TYPE
    std::optional<std::string> Name;     // --name NAME
    std::optional<std::string> Exit;     // --exit create-after|again|MENU_ID
    std::optional<std::string> Overlay;  // --overlay SHAPE, of add-button
    std::optional<std::string> Width;    // set-overlay: --width N
    std::optional<std::string> Text;     //   --text T
    std::optional<std::string> Font;     //   --font "Family[,B][,I]"
    std::optional<std::string> FontSize; //   --font-size PT
    std::optional<std::string> Outline;  //   --outline N
    std::optional<std::string> Shadow;   //   --shadow 4RB
    bool ResetPosition = false;          //   --reset-position
};

// The command line taken apart with the menu commands' own options beside the common ones;
// those options with another command are an error.
CliParseResult ParseMenuCommandLine(std::vector<std::string> args, MenuCliOptions& menu);

// Language sets and menus of a project, each saved back as RunOnProject does.
int RunAddLang(const CliOptions& options, CliContext& context);
int RunAddMenu(const CliOptions& options, const MenuCliOptions& menu, CliContext& context);
int RunRemoveMenu(const CliOptions& options, CliContext& context);
int RunRemoveLang(const CliOptions& options, CliContext& context);
// Buttons of a menu, as the canvas's gestures and menus make them.
int RunAddButton(const CliOptions& options, const MenuCliOptions& menu, CliContext& context);
int RunRemoveButton(const CliOptions& options, CliContext& context);
// A neighbour for a key of the remote control, or none.
int RunSetNav(const CliOptions& options, CliContext& context);
// The action list of a button, or the enter or exit list of a menu, as the action dialog makes it.
int RunSetAction(const CliOptions& options, CliContext& context);
int RunAlign(const CliOptions& options, CliContext& context);
int RunSameSize(const CliOptions& options, CliContext& context);
int RunMoveButton(const CliOptions& options, CliContext& context);
// The overlay of buttons, and the palette colours of a menu.
int RunSetOverlay(const CliOptions& options, const MenuCliOptions& menu, CliContext& context);
int RunSetColors(const CliOptions& options, CliContext& context);
// The language sets, menus, buttons, navigation and actions as text; the project is not saved.
int RunMenus(const CliOptions& options, CliContext& context);

} // namespace mw
