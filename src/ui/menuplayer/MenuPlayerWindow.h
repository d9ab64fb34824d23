#pragma once

#include "media/MoviePlayer.h"
#include "menuplayer/MenuSession.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QImage>

#include <memory>
#include <string>

class QComboBox;
class QLabel;
class QListWidget;
class QTimer;

namespace mw {

class Project;
class PlayerPicture;
class cDIB;

// The project's menus played as a DivX player would, with a remote beside the picture: the
// background movie of the menu, the selected button's overlay in the menu's colours over it,
// the titles the buttons play, a status line and a list of what happened, dead ends in red.
// The keyboard works as the remote: the arrows, Enter for OK, M or Home for the menu key and T
// for the title key.
class MenuPlayerWindow : public QDialog {
public:
    MenuPlayerWindow(Project& project, QWidget* parent = nullptr);
    ~MenuPlayerWindow() override;

    // Starts again from the starting menu of the language chosen in the list.
    void Restart();
    void Press(RemoteKey key);
    // One step of the timer: the session follows the movie that plays, or the clock when none can.
    void Advance();
    const MenuSession& Session() const { return *session_; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Follow(const PlayerEvent& event);
    void PlayMovie(const std::string& file, long from, long to);
    void ShowPicture();
    void ShowOverlay();
    void ShowStatus(const QString& text, bool deadEnd);

    Project& project_;
    std::unique_ptr<MenuSession> session_;
    std::unique_ptr<MoviePlayer> movie_;
    std::string movieFile_;
    std::shared_ptr<const cDIB> shown_; // the movie's picture on the screen
    QElapsedTimer clock_; // for a menu or title whose movie cannot be played
    qint64 clockFrames_ = 0;

    PlayerPicture* picture_;
    QComboBox* language_;
    QLabel* status_;
    QLabel* where_;
    QString whereText_; // what plays, above its frame
    QListWidget* events_;
    QTimer* timer_;
};

// The Tools menu's entry: the player over the open project, until the user closes it.
void ShowMenuPlayer(Project& project);

} // namespace mw
