#pragma once
// The About box (dlgAbout): the release of the rate tables, the notice on
// state penalties, the maker's contact lines, the maker's home page and the
// way into the program. Shown at start-up and by Help - About.

#include "rates/release.h"

#include <QDialog>

namespace rw::ui {

class Desktop;

class AboutBox : public QDialog {
    Q_OBJECT
public:
    AboutBox(const ReleaseInfo& release, Desktop& desktop, QWidget* parent = nullptr);
};

}  // namespace rw::ui
