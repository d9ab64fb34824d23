#pragma once

#include "document/DocTree.h"
#include "document/TreeQueries.h"
#include "media/ModuleMultimedia.h"
#include "media/MoviePreview.h"
#include "ui/QtAudioSinks.h"

#include <QWidget>

#include <functional>
#include <map>
#include <string>

class QAction;
class QMenu;
class QScrollArea;
class QTimer;
class QToolBar;

namespace mw {

class MenuPicture;
class Project;
class Ruler;

// The canvas in PicCon: ToolbarPic over the rulers and the scrolled Picture1. A view of the
// project's canvas; every gesture ends in a command of the core.
class CanvasView : public QWidget {
public:
    struct Hooks {
        // Runs a command that changes the document, with the tree panes told around it.
        std::function<void(const std::function<void()>&)> Change;
        // Selects a node in the tree, as a click there would.
        std::function<void(DocNode*)> Select;
    };

    CanvasView(Project& project, Hooks hooks, QWidget* parent = nullptr);

    // The node selected in the tree: another menu is parsed and shown; a button of the shown
    // menu is selected.
    void ShowNode(DocNode* node);
    // The document was replaced or rolled back: the next node shown parses its menu again.
    void ForgetShownMenu();
    void SetRulersShown(bool shown);
    // Shows the canvas model again, e.g. after the text panel rewrote an overlay.
    void Refresh();

    // A command that changes the document; the canvas shows the outcome.
    void Run(const std::function<void()>& command);
    void ClickButton(int index);
    void FollowLink(int index);
    void BandStarted();
    void EndBand(QPoint from, QPoint to);
    void EndGesture(int index, const ButtonShape& rect);
    void EndOverlayGesture(int index, const ButtonShape& overlay);
    void DeleteSelection();
    void PopupButtonMenu(const QPoint& global);

private:
    void BuildToolbar();
    void BuildButtonMenu();
    void FillOverlayMenu(QMenu& menu);
    void FillWidthMenu(QMenu& menu);
    void StepFrame(long step);
    void AskFrame();
    void ShowFrame();
    // play, stop and closemovie: the menu's background video over the canvas.
    void PlayMovie();
    void CloseMovie();
    void ShowMovie();
    int SelectionCount() const;

    Project& project_;
    Hooks hooks_;
    std::string shownMenu_;
    QToolBar* toolbar_;
    std::map<std::string, QAction*> tools_;
    QScrollArea* scroll_;
    MenuPicture* picture_;
    Ruler* rulerTop_;
    Ruler* rulerLeft_;
    QWidget* rulerCorner_;
    QMenu* buttonMenu_;
    std::map<std::string, QAction*> entries_;
    QMenu* overlayMenu_;
    QMenu* widthMenu_;
    ModuleMultimedia mm_{{}, DeviceSinks()};
    MoviePreview movie_{mm_};
    std::shared_ptr<const cDIB> movieFrame_;
    QTimer* timer_;
};

} // namespace mw
