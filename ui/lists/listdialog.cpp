#include "ui/lists/listdialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace rw::ui {

ListDialog::ListDialog(QWidget* parent, const QString& listName, const QString& caption,
                       const QString& sample)
    : GuardedDialog(parent)
{
    list_ = new QListWidget(this);
    list_->setObjectName(listName);
    list_->setMinimumWidth(list_->fontMetrics().horizontalAdvance(sample) + 40);
    list_->setMinimumHeight(list_->fontMetrics().height() * 10);
    caption_ = new QLabel(caption, this);
    caption_->setBuddy(list_);

    add_ = new QPushButton(QStringLiteral("&Add"), this);
    add_->setObjectName(QStringLiteral("btnAdd"));
    edit_ = new QPushButton(QStringLiteral("&Edit"), this);
    edit_->setObjectName(QStringLiteral("btnEdit"));
    delete_ = new QPushButton(QStringLiteral("&Delete"), this);
    delete_->setObjectName(QStringLiteral("btnDelete"));
    close_ = new QPushButton(QStringLiteral("&Close"), this);
    close_->setObjectName(QStringLiteral("btnClose"));
    for (QPushButton* b : {add_, edit_, delete_, close_})
        b->setAutoDefault(false);
}

QBoxLayout* ListDialog::listArea(std::initializer_list<QPushButton*> leading,
                                 std::initializer_list<QPushButton*> trailing)
{
    auto* commands = new QVBoxLayout;
    std::vector<QPushButton*> buttons(leading);
    buttons.insert(buttons.end(), {add_, edit_, delete_});
    buttons.insert(buttons.end(), trailing);
    for (QPushButton* b : buttons) {
        b->setAutoDefault(false);
        commands->addWidget(b);
    }
    commands->addStretch(1);
    commands->addWidget(close_);

    auto* listColumn = new QVBoxLayout;
    listColumn->addWidget(caption_);
    listColumn->addWidget(list_, 1);

    auto* area = new QHBoxLayout;
    area->addLayout(listColumn, 1);
    area->addLayout(commands);
    return area;
}

void ListDialog::connectCommands(Commands commands)
{
    commands_ = std::move(commands);
    connect(add_, &QPushButton::clicked, this, [this] {
        guard([this] {
            commands_.add();
            commands_.refresh();
        });
    });
    connect(edit_, &QPushButton::clicked, this, [this] {
        guard([this] {
            commands_.edit(selectedLine());
            commands_.refresh();
        });
    });
    connect(delete_, &QPushButton::clicked, this, [this] {
        guard([this] {
            commands_.remove(selectedLine());
            commands_.refresh();
        });
    });
    connect(list_, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
        guard([this, line = list_->row(item)] {
            commands_.edit(line);
            commands_.refresh();
        });
    });
    connect(close_, &QPushButton::clicked, this, [this] { guard([this] { runClose(); }); });
}

void ListDialog::runClose()
{
    if (closing_)
        return;
    closing_ = true;
    if (commands_.close)
        commands_.close();
    if (commands_.refresh)
        commands_.refresh();
    accept();
}

void ListDialog::reject()
{
    if (faulted()) {
        QDialog::reject();
        return;
    }
    guard([this] { runClose(); });
}

void ListDialog::showLines(const std::vector<std::string>& lines, bool editEnabled,
                           bool deleteEnabled)
{
    list_->clear();
    for (const std::string& line : lines)
        list_->addItem(DisplayText(line));
    edit_->setEnabled(editEnabled);
    delete_->setEnabled(deleteEnabled);
}

int ListDialog::selectedLine() const
{
    const auto selected = list_->selectedItems();
    return selected.isEmpty() ? -1 : list_->row(selected.first());
}

}  // namespace rw::ui
