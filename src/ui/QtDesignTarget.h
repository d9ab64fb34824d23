#pragma once

#include "i18n/DesignTarget.h"
#include "i18n/FormDesign.h"
#include "i18n/LangDoc.h"

class QWidget;

namespace mw {

// A Qt window as the language file labels it: its named widgets, its menu entries, the tabs of
// its tab bars, the header columns of its tree and table widgets and the buttons of its tool bars.
// A name "Name_Index" stands for member Index of the control array Name.
class QtDesignTarget final : public DesignTarget {
public:
    explicit QtDesignTarget(QWidget& form) : form_(form) {}

    std::string FormName() const override;
    void SetCaption(const std::string& text) override;
    void ForEachControl(const std::function<void(DesignControl&)>& visit) override;

private:
    QWidget& form_;
};

// A panel placed inside another window keeps a design of its own: the window's design leaves
// it and its controls out.
void MarkAsOwnForm(QWidget& panel);

// A label that shows what the program reports, not a text of the window: no language file holds
// or changes it.
void MarkAsOutput(QWidget& label);

// LoadTextForDesign for a Qt window.
void LoadTextForDesign(const LangDoc& lang, QWidget& form);

// The texts a Qt window shows now, named as LoadTextForDesign labels them.
FormDesign ReadFormDesign(QWidget& form);

} // namespace mw
