#pragma once

#include "i18n/DesignTarget.h"

#include <optional>
#include <string>
#include <vector>

namespace mw {

// The texts of a window as plain data, for windows that are no widgets: tests, and the
// writer of the English language file.
struct TabTexts {
    std::string Caption;
    std::string ToolTipText;
    bool operator==(const TabTexts&) const = default;
};

struct ButtonTexts {
    std::string Caption;
    std::string ToolTipText;
    bool operator==(const ButtonTexts&) const = default;
};

struct ControlDesign {
    // Fields a window lacks stay default, so a control can be written with only what it has.
    std::string Name;
    std::optional<int> Index{};
    std::string TypeName;
    std::optional<std::string> Caption{}; // none for a control without a caption
    std::string ToolTipText{};
    std::vector<TabTexts> Tabs{};
    std::vector<std::string> Columns{};
    std::vector<ButtonTexts> Buttons{};
    bool operator==(const ControlDesign&) const = default;
};

struct FormDesign {
    std::string FormName;
    std::string Caption;
    std::vector<ControlDesign> Controls;
    bool operator==(const FormDesign&) const = default;
};

// Lets LoadTextForDesign label a FormDesign.
class FormDesignTarget final : public DesignTarget {
public:
    explicit FormDesignTarget(FormDesign& form) : form_(form) {}

    std::string FormName() const override { return form_.FormName; }
    void SetCaption(const std::string& text) override { form_.Caption = text; }
    void ForEachControl(const std::function<void(DesignControl&)>& visit) override;

private:
    FormDesign& form_;
};

} // namespace mw
