#pragma once

#include "generators/SubEditButtons.h"

#include <QDialog>

namespace mw {

// The active buttons drawn as numbered rectangles over the picture they were found in.
class frmDVDSubEditPreview : public QDialog {
public:
    explicit frmDVDSubEditPreview(const SubEditSet& set, QWidget* parent = nullptr);
};

// The picture with the rectangles, as the preview shows it.
QImage SubEditPreviewPicture(const SubEditSet& set);

} // namespace mw
