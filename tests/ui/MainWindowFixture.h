#pragma once

// The main window as the window tests drive it: over a program folder of its own, answered by a
// scripted prompt, with its dialogs attached.

#include "core/ScriptedPrompt.h"
#include "ui/QtFormHost.h"
#include "ui/mainwindow/DocTreeModel.h"
#include "ui/mainwindow/Form1.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace mw::test {

inline void WriteFile(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

struct MainWindow {
    // Files placed in the program folder before the program starts: settings, language files.
    using Files = std::vector<std::pair<std::string, std::string>>;

    QTemporaryDir home;
    ProgramState program{home.path().toStdString()};
    ScriptedPrompt prompt;
    QtFormHost forms;
    std::unique_ptr<Form1> form;

    explicit MainWindow(const Files& files = {})
    {
        for (const auto& [name, text] : files)
            Write(name, text);
        StartProgram(program);
        form = std::make_unique<Form1>(program, prompt, forms);
        forms.Attach(form->CurrentProject(), form.get());
    }

    std::filesystem::path Folder() const { return program.Lang.ProgramFolder(); }
    Project& project() const { return form->CurrentProject(); }
    void Write(const std::string& name, const std::string& text) const { WriteFile(Folder() / name, text); }
    QAction* Action(const char* name) const { return form->findChild<QAction*>(name); }
    template <typename T> T* Widget(const char* name) const { return form->findChild<T*>(name); }

    // Opens a project file through mnuOpen, as the user picks it in the dialog.
    void OpenByMenu(const std::string& path)
    {
        prompt.OpenedFiles.push_back({path});
        Action("mnuOpen")->trigger();
    }
    // Selects the node of an object identifier in TreeView1.
    DocNode* Select(const char* id) const
    {
        auto* tree = Widget<QTreeView>("TreeView1");
        DocNode* node = project().Doc.Tree.ObjectNode(id);
        tree->setCurrentIndex(static_cast<DocTreeModel*>(tree->model())->IndexOf(node));
        return node;
    }
    std::string SelectedKey() const
    {
        const DocNode* node = project().Doc.Tree.Selected();
        return node ? node->Key() : "";
    }
};

// A control of a window by its name; the test stops when there is none.
template <typename T> T* Child(QWidget& parent, const char* name)
{
    T* child = parent.findChild<T*>(name);
    if (!child)
        qFatal("no control %s", name);
    return child;
}

inline void Click(QWidget& parent, const char* button)
{
    QTest::mouseClick(Child<QPushButton>(parent, button), Qt::LeftButton);
}

// Runs `act` on the modal dialog once it shows.
inline void OnNextDialog(const std::function<void(QDialog&)>& act)
{
    QTimer::singleShot(0, [act] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            qFatal("no dialog came up");
        act(*dialog);
    });
}

} // namespace mw::test
