#pragma once
// The case at a glance in the main window's central area: the sections of a
// CaseOverview as read-only tables (the case, penalties and options, what is
// owed, the three lists). A double-click on a part, or Enter on a line, runs
// the callback for the dialog that changes it; the widget knows no dialog.

#include "reports/overview.h"

#include <QScrollArea>

#include <functional>
#include <map>
#include <vector>

class QFrame;
class QGridLayout;
class QLabel;

namespace rw::ui {

class OverviewTable;

class OverviewWidget : public QScrollArea {
    Q_OBJECT
public:
    using Openers = std::map<OverviewTarget, std::function<void()>>;

    explicit OverviewWidget(QWidget* parent = nullptr);
    ~OverviewWidget() override;

    // What a double-click on each part runs; a part without one does nothing.
    void setOpeners(Openers openers) { openers_ = std::move(openers); }

    // Shows the overview; nothing is redrawn when it is the one shown.
    void showOverview(const CaseOverview& overview);
    const CaseOverview& shown() const { return shown_; }

    // Runs the callback of the target, when it has one.
    void open(OverviewTarget target);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Section {
        QFrame* box = nullptr;
        QLabel* title = nullptr;
        QLabel* count = nullptr;
        OverviewTable* table = nullptr;
        QLabel* notes = nullptr;
        OverviewTarget opens = OverviewTarget::None;
    };
    enum Part { CasePart, SettingsPart, FiguresPart, PaymentsPart, ChargesPart, DepositsPart };

    Section makeSection(const char* name, const QString& title, OverviewTarget opens,
                        const QString& tip);
    void showLines(Section& s, const std::vector<OverviewLine>& lines, bool lastIsTotal);
    void showList(Section& s, const OverviewList& list);
    // One column of sections when the window is too narrow for two.
    void arrange();

    QWidget* page_ = nullptr;
    QGridLayout* grid_ = nullptr;
    std::vector<Section> sections_;
    int columns_ = 0;
    CaseOverview shown_;
    bool drawn_ = false;
    Openers openers_;
};

}  // namespace rw::ui
