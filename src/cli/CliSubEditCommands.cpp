#include "cli/CliSubEditCommands.h"

#include "core/Text.h"
#include "document/Project.h"
#include "menus/CanvasCommands.h"
#include "generators/SubEditButtons.h"

#include <QImage>

#include <iostream>

namespace mw {

int RunButtonsFromPicture(const CliOptions& options, CliContext& context)
{
    const std::vector<std::string>& args = options.Arguments;
    if (args.size() != 3)
        return Refuse(context, options, "expected a project file, a menu id and a picture");
    SubEditPaste paste;
    paste.Overlays = !options.Menu.NoOverlays;
    if (const std::optional<std::string>& side = options.Menu.Force) {
        const std::optional<long> value = DigitsNumber(*side, 5);
        if (!value || *value < 1 || *value > 9999)
            return Refuse(context, options, "--force takes a size in pixels from 1 to 9999");
        paste.ForceSide = static_cast<int>(*value);
    }
    int skipped = 0;
    if (const std::optional<std::string>& group = options.Menu.Set) {
        const std::optional<long> value = DigitsNumber(*group, 3);
        if (!value || *value < 1)
            return Refuse(context, options, "--set takes the number of a group of twenty areas, from 1");
        skipped = static_cast<int>(*value - 1) * kSubEditSetSize;
    }
    const QImage picture(QString::fromStdString(args[2]));
    if (picture.isNull())
        return Refuse(context, options, "cannot read the picture " + args[2]);
    return RunOnProject(options, context, [&](Project& project) {
        DocNode* menu = project.Doc.Tree.ObjectNode(args[1]);
        if (!menu || !EqualsNoCase(menu->Text, "DivXMediaMenu"))
            return Refuse(context, options, args[1] + " is not a menu of the project");
        SubEditSets sets;
        std::string status;
        if (!sets.Capture(picture, project.Ask(), status, skipped))
            return static_cast<int>(kExitFaults);
        context.Err << status << '\n';
        ParceMenu(project, *menu);
        const std::vector<std::string> ids = PasteSubEditButtons(project, sets.Active(), paste);
        if (ids.empty())
            return static_cast<int>(kExitUnsaved);
        for (const std::string& id : ids)
            std::cout << id << '\n';
        return static_cast<int>(kExitOk);
    });
}

} // namespace mw
