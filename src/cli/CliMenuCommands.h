#pragma once

#include "cli/CliCommands.h"

namespace mw {

// Language sets and menus of a project, each saved back as RunOnProject does.
int RunAddLang(const CliOptions& options, CliContext& context);
int RunAddMenu(const CliOptions& options, CliContext& context);
int RunRemoveMenu(const CliOptions& options, CliContext& context);
int RunRemoveLang(const CliOptions& options, CliContext& context);
// Buttons of a menu, as the canvas's gestures and menus make them.
int RunAddButton(const CliOptions& options, CliContext& context);
int RunRemoveButton(const CliOptions& options, CliContext& context);
// A neighbour for a key of the remote control, or none.
int RunSetNav(const CliOptions& options, CliContext& context);
// The action list of a button, or the enter or exit list of a menu, as the action dialog makes it.
int RunSetAction(const CliOptions& options, CliContext& context);
int RunAlign(const CliOptions& options, CliContext& context);
int RunSameSize(const CliOptions& options, CliContext& context);
int RunMoveButton(const CliOptions& options, CliContext& context);
// The overlay of buttons, and the palette colours of a menu.
int RunSetOverlay(const CliOptions& options, CliContext& context);
int RunSetColors(const CliOptions& options, CliContext& context);
// One menu written as a template file (-o); the project is not saved.
int RunExportTemplate(const CliOptions& options, CliContext& context);
// A template read into a language set (--lang, else the first) as a new menu; prints its identifier.
int RunInsertTemplate(const CliOptions& options, CliContext& context);
// The language sets, menus, buttons, navigation and actions as text; the project is not saved.
int RunMenus(const CliOptions& options, CliContext& context);

} // namespace mw
