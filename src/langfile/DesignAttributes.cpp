#include "langfile/DesignAttributes.h"

#include <algorithm>
#include <cstddef>

namespace mw {

namespace {

class AttributeList {
public:
    AttributeList(std::string form, std::vector<std::string>& conflicts)
        : form_(std::move(form)), conflicts_(conflicts)
    {
    }

    void Add(const std::string& name, const std::string& value)
    {
        if (value.empty())
            return;
        const auto same =
            std::find_if(list_.begin(), list_.end(), [&](const DesignAttribute& a) { return a.Name == name; });
        if (same == list_.end())
            list_.push_back({name, value});
        else if (same->Value != value)
            conflicts_.push_back(form_ + "_Design " + name + ": \"" + same->Value + "\" and \"" + value + "\"");
    }

    std::vector<DesignAttribute> Take() { return std::move(list_); }

private:
    std::string form_;
    std::vector<std::string>& conflicts_;
    std::vector<DesignAttribute> list_;
};

std::string Part(const std::string& name, std::size_t slot) { return name + "_" + std::to_string(slot + 1); }

void AddControl(AttributeList& list, const ControlDesign& c)
{
    if (c.TypeName == "TabStrip") {
        for (std::size_t i = 0; i < c.Tabs.size(); ++i) {
            list.Add(Part(c.Name, i), c.Tabs[i].Caption);
            list.Add(Part(c.Name, i) + "_ToolTipText", c.Tabs[i].ToolTipText);
        }
    } else if (c.TypeName == "ListView") {
        for (std::size_t i = 0; i < c.Columns.size(); ++i)
            list.Add(Part(c.Name, i), c.Columns[i]);
    } else if (c.TypeName == "Toolbar") {
        for (std::size_t i = 0; i < c.Buttons.size(); ++i) {
            list.Add(Part(c.Name, i), c.Buttons[i].Caption);
            list.Add(Part(c.Name, i) + "_ToolTipText", c.Buttons[i].ToolTipText);
        }
    } else {
        const std::string key = c.Index ? c.Name + "_" + std::to_string(*c.Index) : c.Name;
        if (c.Caption)
            list.Add(key, *c.Caption);
        list.Add(key + "_ToolTipText", c.ToolTipText);
    }
}

} // namespace

std::vector<DesignAttribute> DesignAttributes(const FormDesign& form, std::vector<std::string>& conflicts)
{
    AttributeList list(form.FormName, conflicts);
    list.Add(form.FormName, form.Caption);
    for (const ControlDesign& control : form.Controls)
        AddControl(list, control);
    return list.Take();
}

} // namespace mw
