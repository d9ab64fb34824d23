#include "i18n/FormDesign.h"

#include <cstddef>

namespace mw {

namespace {

class ControlDesignAdapter final : public DesignControl {
public:
    explicit ControlDesignAdapter(ControlDesign& control) : c_(control) {}

    std::string Name() const override { return c_.Name; }
    std::optional<int> Index() const override { return c_.Index; }
    std::string TypeName() const override { return c_.TypeName; }
    bool HasCaption() const override { return c_.Caption.has_value(); }
    void SetCaption(const std::string& text) override
    {
        if (c_.Caption)
            c_.Caption = text;
    }
    void SetToolTipText(const std::string& text) override { c_.ToolTipText = text; }

    int TabCount() const override { return static_cast<int>(c_.Tabs.size()); }
    void SetTabCaption(int i, const std::string& text) override { c_.Tabs.at(Slot(i)).Caption = text; }
    void SetTabToolTipText(int i, const std::string& text) override { c_.Tabs.at(Slot(i)).ToolTipText = text; }
    int ColumnCount() const override { return static_cast<int>(c_.Columns.size()); }
    void SetColumnText(int i, const std::string& text) override { c_.Columns.at(Slot(i)) = text; }
    int ButtonCount() const override { return static_cast<int>(c_.Buttons.size()); }
    void SetButtonCaption(int i, const std::string& text) override { c_.Buttons.at(Slot(i)).Caption = text; }
    void SetButtonToolTipText(int i, const std::string& text) override
    {
        c_.Buttons.at(Slot(i)).ToolTipText = text;
    }

private:
    static std::size_t Slot(int i) { return static_cast<std::size_t>(i - 1); }
    ControlDesign& c_;
};

} // namespace

void FormDesignTarget::ForEachControl(const std::function<void(DesignControl&)>& visit)
{
    for (ControlDesign& control : form_.Controls) {
        ControlDesignAdapter adapter(control);
        visit(adapter);
    }
}

} // namespace mw
