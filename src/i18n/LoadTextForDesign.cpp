#include "i18n/LoadTextForDesign.h"

#include <string>
#include <utility>

namespace mw {

namespace {

// Sets a text only when the window's section holds its attribute; an empty value counts.
class DesignTexts {
public:
    DesignTexts(const LangDoc& lang, std::string form) : lang_(lang), form_(std::move(form)) {}

    template <typename Set>
    void Apply(const std::string& attribute, Set set) const
    {
        if (const auto text = lang_.DesignText(form_, attribute))
            set(*text);
    }

private:
    const LangDoc& lang_;
    std::string form_;
};

void LabelTabStrip(const DesignTexts& texts, DesignControl& control, const std::string& name)
{
    for (int i = 1; i <= control.TabCount(); ++i) {
        const std::string tab = name + "_" + std::to_string(i);
        texts.Apply(tab, [&](const std::string& s) { control.SetTabCaption(i, s); });
        texts.Apply(tab + "_ToolTipText", [&](const std::string& s) { control.SetTabToolTipText(i, s); });
    }
}

void LabelListView(const DesignTexts& texts, DesignControl& control, const std::string& name)
{
    for (int i = 1; i <= control.ColumnCount(); ++i)
        texts.Apply(name + "_" + std::to_string(i), [&](const std::string& s) { control.SetColumnText(i, s); });
}

void LabelToolbar(const DesignTexts& texts, DesignControl& control, const std::string& name)
{
    for (int i = 1; i <= control.ButtonCount(); ++i) {
        const std::string button = name + "_" + std::to_string(i);
        texts.Apply(button + "_ToolTipText", [&](const std::string& s) { control.SetButtonToolTipText(i, s); });
        texts.Apply(button, [&](const std::string& s) { control.SetButtonCaption(i, s); });
    }
}

void LabelControl(const DesignTexts& texts, DesignControl& control)
{
    const std::string name = control.Name();
    const std::string type = control.TypeName();
    if (type == "TabStrip") {
        LabelTabStrip(texts, control, name);
    } else if (type == "ListView") {
        LabelListView(texts, control, name);
    } else if (type == "Toolbar") {
        LabelToolbar(texts, control, name);
    } else {
        const auto index = control.Index();
        const std::string key = index ? name + "_" + std::to_string(*index) : name;
        if (control.HasCaption())
            texts.Apply(key, [&](const std::string& s) { control.SetCaption(s); });
        texts.Apply(key + "_ToolTipText", [&](const std::string& s) { control.SetToolTipText(s); });
    }
}

} // namespace

void LoadTextForDesign(const LangDoc& lang, DesignTarget& target)
{
    const std::string form = target.FormName();
    const DesignTexts texts(lang, form);
    texts.Apply(form, [&](const std::string& s) { target.SetCaption(s); });
    target.ForEachControl([&](DesignControl& control) { LabelControl(texts, control); });
}

} // namespace mw
