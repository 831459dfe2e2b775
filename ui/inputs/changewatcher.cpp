#include "ui/inputs/inputdialog.h"

#include "ui/common/fields.h"

#include <QLineEdit>

namespace rw::ui {

ChangeWatcher::ChangeWatcher(QLineEdit* field)
    : QObject(field)
    , field_(field)
    , onEntry_(field->text())
{
    auto* focus = new FocusWatcher(field);
    connect(focus, &FocusWatcher::focusGained, this, [this] { onEntry_ = field_->text(); });
    connect(focus, &FocusWatcher::focusLost, this, [this] {
        if (field_->text() == onEntry_)
            return;
        onEntry_ = field_->text();
        Q_EMIT changedAndLeft();
    });
}

}  // namespace rw::ui
