#pragma once

#include <functional>
#include <optional>
#include <string>

namespace mw {

// One control of a window, as the language file labels it. Tabs, columns and buttons are
// numbered from 1.
class DesignControl {
public:
    virtual ~DesignControl() = default;

    virtual std::string Name() const = 0;
    // A member of a control array has an index; any other control has none.
    virtual std::optional<int> Index() const = 0;
    // "TabStrip", "ListView", "Toolbar" get their parts labelled; any other type its caption.
    virtual std::string TypeName() const = 0;
    virtual bool HasCaption() const = 0;
    virtual void SetCaption(const std::string& text) = 0;
    virtual void SetToolTipText(const std::string& text) = 0;

    virtual int TabCount() const = 0;
    virtual void SetTabCaption(int i, const std::string& text) = 0;
    virtual void SetTabToolTipText(int i, const std::string& text) = 0;
    virtual int ColumnCount() const = 0;
    virtual void SetColumnText(int i, const std::string& text) = 0;
    virtual int ButtonCount() const = 0;
    virtual void SetButtonCaption(int i, const std::string& text) = 0;
    virtual void SetButtonToolTipText(int i, const std::string& text) = 0;
};

// A window, as the language file labels it: its form name, its caption and its controls.
class DesignTarget {
public:
    virtual ~DesignTarget() = default;

    virtual std::string FormName() const = 0;
    virtual void SetCaption(const std::string& text) = 0;
    virtual void ForEachControl(const std::function<void(DesignControl&)>& visit) = 0;
};

} // namespace mw
