#pragma once
// The "Update Alert" window (frmGetUpdate): tells the user that the stop date
// lies past the verified rates of this release. "Check For More Current
// Version" opens the maker's update page and leaves the alert open; the other
// button closes it ("End Program": the caller then ends the program).

#include "shell/ratealert.h"

#include <QDialog>

namespace rw::ui {

class Desktop;

class UpdateAlertWindow : public QDialog {
    Q_OBJECT
public:
    UpdateAlertWindow(const RateAlert& alert, Desktop& desktop, QWidget* parent = nullptr);
};

}  // namespace rw::ui
