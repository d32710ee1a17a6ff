#include "desktop/qt/search_page_view.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

#include "core/forms.h"
#include "desktop/qt/bound_widgets.h"
#include "desktop/qt/control_look.h"
#include "desktop/qt/menu_view.h"

namespace velmora {

namespace {

// Buttons and boxes whose captions the logic never changes carry them from
// the window's design; a caption the logic sets wins.
QString Caption(const CaptionControl& control, const QString& design_caption) {
    return control.Caption().empty() ? design_caption : MenuText(control.Caption());
}

}  // namespace

// ---------------------------------------------------------------------------

ListBoxWidget::ListBoxWidget(ListBox& box, QWidget* parent) : QListWidget(parent), m_box(box) {
    setObjectName(Q(box.Name()));
    setUniformItemSizes(true);
    setAlternatingRowColors(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(box.MultiSelect() ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
    // Long paths lose their beginning, which the rows share, and keep the
    // folder's own name in sight; the whole path is in the row's tip.
    setTextElideMode(Qt::ElideLeft);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &ListBoxWidget::ViewSelectionChanged);
    m_subscriptions.push_back(box.Changed.connect([this](Change kind) {
        switch (kind) {
            case Change::Contents: m_contents_dirty = true; break;
            case Change::Selection:
            case Change::Index: m_selection_dirty = true; break;
            case Change::Look: ApplyLook(*this, m_box); break;
        }
        Schedule();
    }));
    ApplyLook(*this, box);
    Flush();
}

void ListBoxWidget::Schedule() { m_pacer.Request(); }

void ListBoxWidget::Flush() {
    // A hidden box keeps its debt until it is shown.
    if (!m_box.Visible()) return;
    QScopedValueRollback guard(m_syncing, true);
    if (m_contents_dirty) {
        m_contents_dirty = false;
        m_selection_dirty = true;
        QStringList rows;
        rows.reserve(m_box.ListCount());
        for (std::string_view item : m_box.Items()) rows << Q(item);
        clear();
        addItems(rows);
        for (int row = 0; row < QListWidget::count(); ++row) item(row)->setToolTip(rows[row]);
    }
    if (m_selection_dirty) {
        m_selection_dirty = false;
        ApplySelection();
    }
}

void ListBoxWidget::ApplySelection() {
    QItemSelection selection;
    const int count = std::min(m_box.ListCount(), QListWidget::count());
    int run_start = -1;
    for (int row = 0; row <= count; ++row) {
        const bool on = row < count && m_box.Selected(row);
        if (on && run_start < 0) run_start = row;
        if (!on && run_start >= 0) {
            selection.select(model()->index(run_start, 0), model()->index(row - 1, 0));
            run_start = -1;
        }
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    const QModelIndex current = model()->index(m_box.ListIndex(), 0);
    if (current.isValid() && currentIndex() != current) {
        selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
        scrollTo(current);
    }
}

void ListBoxWidget::ViewSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    if (m_syncing) return;
    for (const QItemSelectionRange& range : deselected)
        for (int row = range.top(); row <= range.bottom(); ++row) m_box.Store_Selected(row, false);
    for (const QItemSelectionRange& range : selected)
        for (int row = range.top(); row <= range.bottom(); ++row) m_box.Store_Selected(row, true);
    // One gesture may change the selection in several steps; the handler
    // hears of it once, after all of them are stored.
    if (m_click_pending) return;
    m_click_pending = true;
    QTimer::singleShot(0, this, [this] {
        m_click_pending = false;
        m_box.SetListIndex(currentRow());
    });
}

// ---------------------------------------------------------------------------

namespace {
constexpr int kPathRole = Qt::UserRole;
}

FolderBoxWidget::FolderBoxWidget(FileSystemBox& box, QWidget* parent) : QListWidget(parent), m_box(box) {
    setObjectName(Q(box.Name()));
    setUniformItemSizes(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setIconSize(QSize(16, 16));
    setTextElideMode(Qt::ElideRight);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setToolTip(tr("Double click a folder to open it"));
    connect(this, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        const std::string path = item->data(kPathRole).toString().toStdString();
        if (!path.empty() && path != m_box.Path()) m_box.SetPath(path);
    });
    m_subscriptions.push_back(box.Changed.connect([this](Change kind) {
        if (kind == Change::Look) ApplyLook(*this, m_box);
        Schedule();
    }));
    ApplyLook(*this, box);
    Flush();
}

void FolderBoxWidget::Schedule() { m_pacer.Request(); }

void FolderBoxWidget::Flush() {
    if (!m_box.Visible()) return;
    clear();
    const QString path = Q(m_box.Path());
    if (path.isEmpty()) return;
    const QIcon open = style()->standardIcon(QStyle::SP_DirOpenIcon);
    const QIcon closed = style()->standardIcon(QStyle::SP_DirIcon);
    // The way down from the root, each folder one step further in.
    const QStringList parts = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    QString so_far;
    QListWidgetItem* here = nullptr;
    for (int depth = 0; depth <= parts.size(); ++depth) {
        if (depth > 0) so_far += QLatin1Char('/') + parts[depth - 1];
        auto* item = new QListWidgetItem(open, QString(depth * 2, QLatin1Char(' ')) +
                                                   (depth == 0 ? QStringLiteral("/") : parts[depth - 1]),
                                         this);
        item->setData(kPathRole, depth == 0 ? QStringLiteral("/") : so_far);
        item->setToolTip(item->data(kPathRole).toString());
        here = item;
    }
    const QString indent((parts.size() + 1) * 2, QLatin1Char(' '));
    for (std::string_view folder : m_box.Items()) {
        const QString full = Q(folder);
        auto* item = new QListWidgetItem(closed, indent + full.section(QLatin1Char('/'), -1, -1, QString::SectionSkipEmpty), this);
        item->setData(kPathRole, full);
        item->setToolTip(full);
    }
    if (here) {
        setCurrentItem(here);
        scrollToItem(here, QAbstractItemView::PositionAtTop);
    }
}

// ---------------------------------------------------------------------------

SearchPageView::SearchPageView(Form1& form, QWidget* parent) : QObject(parent), m_form(form) {
    m_search_page = new QWidget(parent);
    m_search_page->setObjectName(QStringLiteral("SearchPage"));
    auto* column = new QVBoxLayout(m_search_page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(BuildSearchFrame(m_search_page), 1);

    // Outside Frame1, which is disabled while a search runs: the stop button
    // must stay in reach then, and the progress stay readable.
    auto* switches = new QHBoxLayout;
    switches->addWidget(Check(form.Check2, QStringLiteral("Yποφάκελοι - Subdirectories        ---->"), m_search_page));
    switches->addStretch(1);
    QPushButton* stop = Button(form.Command2, QStringLiteral("Διακοπή - Stop"), m_search_page);
    stop->setIcon(stop->style()->standardIcon(QStyle::SP_BrowserStop));
    stop->setToolTip(tr("Stop the search (Esc)"));
    switches->addWidget(stop);
    column->addLayout(switches);
    column->addWidget(LineBox(form.Text2[2], m_search_page));
    QPlainTextEdit* progress = TextArea(form.Text2[1], m_search_page);
    // Three lines above the bar that scrolls the long ones sideways.
    progress->setFixedHeight(progress->fontMetrics().lineSpacing() * 3 +
                             progress->horizontalScrollBar()->sizeHint().height() + 2 * progress->frameWidth() + 8);
    column->addWidget(progress);

    // The page holds the frame, so that the frame's own visible state and
    // the page group's choice of page do not overrule each other.
    m_folders_page = new QWidget(parent);
    m_folders_page->setObjectName(QStringLiteral("FoldersPage"));
    auto* folders_column = new QVBoxLayout(m_folders_page);
    folders_column->setContentsMargins(0, 0, 0, 0);
    folders_column->addWidget(BuildFoldersFrame(m_folders_page));
}

QGroupBox* SearchPageView::BuildSearchFrame(QWidget* parent) {
    Form1& f = m_form;
    QGroupBox* box = Bind_Frame(f.Frame1, parent, m_subscriptions, true);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(4);

    // The drive above the folders; the folder's files beside them.
    grid->addWidget(DriveBox(box), 0, 0);
    auto* folders = new FolderBoxWidget(f.Dir1, box);
    grid->addWidget(folders, 1, 0);
    auto* files_head = new QLabel(tr("Files"), box);
    files_head->setToolTip(tr("The files of the folder that are of the chosen types"));
    grid->addWidget(files_head, 0, 1);
    grid->addWidget(new ListBoxWidget(f.File1, box), 1, 1);

    // The media types and the buttons that choose them by kind.
    auto* types_head = new QLabel(tr("Types"), box);
    grid->addWidget(types_head, 0, 2, 1, 2);
    auto* types = new ListBoxWidget(f.List3, box);
    // Every click turns one type on or off; no modifier key is needed.
    types->setSelectionMode(QAbstractItemView::MultiSelection);
    types->setFixedWidth(types->fontMetrics().horizontalAdvance(QStringLiteral("*.dvr-ms")) + 40);
    grid->addWidget(types, 1, 2);
    auto* kinds = new QVBoxLayout;
    kinds->setSpacing(2);
    static const char* const kKinds[] = {"Όλα - All", "Ήχος- Sound", "Βίντεο - Video", "Λίστες - Lists",
                                         "Έξτρα - Extra"};
    for (int i = 0; i < 5; ++i) kinds->addWidget(Button(f.Command7[i], QString::fromUtf8(kKinds[i]), box));
    kinds->addStretch(1);
    grid->addLayout(kinds, 1, 3);
    grid->setColumnStretch(0, 3);
    grid->setColumnStretch(1, 4);
    grid->setRowStretch(1, 1);

    // All files of the folder or the selected ones, and what to do with them.
    auto* choices = new QHBoxLayout;
    QRadioButton *all = nullptr, *selected = nullptr;
    OptionPair(f.Option4[0], f.Option4[1], QStringLiteral("Όλα - All"), QStringLiteral("Επιλεγμένα  Selected"), box,
               all, selected);
    choices->addWidget(all);
    choices->addWidget(selected);
    choices->addStretch(1);
    grid->addLayout(choices, 2, 0, 1, 4);

    auto* actions = new QGridLayout;
    actions->setHorizontalSpacing(6);
    actions->setVerticalSpacing(4);
    QPushButton* add = Button(f.Command18[0], QStringLiteral("Πρόσθεσε Αρχεία Add Files"), box);
    add->setIcon(add->style()->standardIcon(QStyle::SP_DialogApplyButton));
    QPushButton* remove = Button(f.Command18[1], QStringLiteral("Αφαίρεσε Remove Files"), box);
    remove->setIcon(remove->style()->standardIcon(QStyle::SP_DialogDiscardButton));
    actions->addWidget(add, 0, 0);
    actions->addWidget(remove, 0, 1);
    QPushButton* add_identify =
        Button(f.Command4, QStringLiteral("Πρόσθεσε και Αναγνώρισε - Add and Identify"), box);
    add_identify->setToolTip(tr("Add the files, then read their length, size and tags"));
    QPushButton* remove_ask = Button(f.Command5, QStringLiteral("Αφαίρεση - Remove"), box);
    remove_ask->setToolTip(tr("Remove the files after asking, then offer to remake the filters"));
    actions->addWidget(add_identify, 1, 0);
    actions->addWidget(remove_ask, 1, 1);
    grid->addLayout(actions, 3, 0, 1, 4);
    return box;
}

QGroupBox* SearchPageView::BuildFoldersFrame(QWidget* parent) {
    Form1& f = m_form;
    QGroupBox* box = Bind_Frame(f.Frame8, parent, m_subscriptions, true);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(6, 6, 6, 6);
    row->addWidget(new ListBoxWidget(f.List1, box), 1);

    QGroupBox* choices = Bind_Frame(f.Frame10, box, m_subscriptions, true);
    auto* column = new QVBoxLayout(choices);
    column->setSpacing(4);
    column->addWidget(Button(f.Command1[0], QStringLiteral("Επέλεξε Όλους - Select All"), choices));
    column->addWidget(Button(f.Command1[1], QStringLiteral("Αντιστροφή - Invert"), choices));
    QRadioButton *all = nullptr, *selected = nullptr;
    OptionPair(f.Option1_0, f.Option1_1, QStringLiteral("Όλους - All"), QStringLiteral("Επιλεγμένους - Selected"),
               choices, all, selected);
    column->addWidget(all);
    column->addWidget(selected);
    column->addStretch(1);
    row->addWidget(choices);
    return box;
}

QComboBox* SearchPageView::DriveBox(QWidget* parent) {
    FileSystemBox& drive = m_form.Drive1;
    auto* combo = new QComboBox(parent);
    combo->setObjectName(Q(drive.Name()));
    combo->setIconSize(QSize(16, 16));
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(8);
    auto apply = [this, combo, &drive] {
        QScopedValueRollback guard(m_syncing, true);
        const QIcon icon = combo->style()->standardIcon(QStyle::SP_DriveHDIcon);
        QStringList shown;
        for (int i = 0; i < combo->count(); ++i) shown << combo->itemText(i);
        QStringList wanted;
        for (std::string_view point : drive.Items()) wanted << Q(point);
        if (shown != wanted) {
            combo->clear();
            for (const QString& point : wanted) combo->addItem(icon, point);
        }
        // A drive the list lacks (from a Collection made elsewhere) still shows.
        combo->setCurrentIndex(combo->findText(Q(drive.Path())));
        combo->setPlaceholderText(Q(drive.Path()));
        ApplyLook(*combo, drive);
    };
    connect(combo, &QComboBox::activated, this, [this, combo, &drive](int index) {
        if (m_syncing || index < 0) return;
        const std::string point = combo->itemText(index).toStdString();
        if (point != drive.Path()) drive.SetPath(point);
    });
    m_subscriptions.push_back(drive.Changed.connect([apply](Change) { apply(); }));
    apply();
    return combo;
}

QPushButton* SearchPageView::Button(CaptionControl& button, const QString& design_caption, QWidget* parent) {
    auto* widget = new QPushButton(parent);
    widget->setObjectName(Q(button.Name()));
    widget->setAutoDefault(false);
    connect(widget, &QPushButton::clicked, this, [&button] { button.Click.emit(); });
    auto apply = [widget, &button, design_caption] {
        widget->setText(Caption(button, design_caption));
        ApplyLook(*widget, button);
    };
    m_subscriptions.push_back(button.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

QCheckBox* SearchPageView::Check(ValueControl& check, const QString& design_caption, QWidget* parent) {
    auto* widget = new QCheckBox(parent);
    widget->setObjectName(Q(check.Name()));
    auto apply = [this, widget, &check, design_caption] {
        QScopedValueRollback guard(m_syncing, true);
        widget->setText(Caption(check, design_caption));
        widget->setChecked(check.Value() != 0);
        ApplyLook(*widget, check);
    };
    connect(widget, &QCheckBox::clicked, this, [this, widget, &check](bool on) {
        if (m_syncing) return;
        check.SetValue(on ? 1 : 0);
        check.Click.emit();
        // A handler that turns the box back leaves Value as it was before
        // the click, which raises no change; the mark is drawn again here.
        QScopedValueRollback guard(m_syncing, true);
        widget->setChecked(check.Value() != 0);
    });
    m_subscriptions.push_back(check.Changed.connect([apply](Change) { apply(); }));
    apply();
    return widget;
}

void SearchPageView::OptionPair(ValueControl& first, ValueControl& second, const QString& first_caption,
                                const QString& second_caption, QWidget* parent, QRadioButton*& first_widget,
                                QRadioButton*& second_widget) {
    ValueControl* controls[2] = {&first, &second};
    const QString captions[2] = {first_caption, second_caption};
    QRadioButton* widgets[2];
    for (int i = 0; i < 2; ++i) {
        widgets[i] = new QRadioButton(parent);
        widgets[i]->setObjectName(Q(controls[i]->Name()));
        // The marks are drawn from the controls' values, not kept by Qt.
        widgets[i]->setAutoExclusive(false);
    }
    for (int i = 0; i < 2; ++i) {
        ValueControl& self = *controls[i];
        ValueControl& other = *controls[1 - i];
        QRadioButton* widget = widgets[i];
        auto apply = [this, widget, &self, caption = captions[i]] {
            QScopedValueRollback guard(m_syncing, true);
            widget->setText(Caption(self, caption));
            widget->setChecked(self.Value() != 0);
            ApplyLook(*widget, self);
        };
        connect(widget, &QRadioButton::clicked, this, [this, &self, &other, apply] {
            if (m_syncing) return;
            // An option button clears the others of its group.
            other.SetValue(0);
            self.SetValue(1);
            apply();
            self.Click.emit();
        });
        m_subscriptions.push_back(self.Changed.connect([apply](Change) { apply(); }));
        apply();
    }
    first_widget = widgets[0];
    second_widget = widgets[1];
}

QLineEdit* SearchPageView::LineBox(TextBox& box, QWidget* parent) {
    auto* widget = new QLineEdit(parent);
    widget->setObjectName(Q(box.Name()));
    widget->setReadOnly(true);
    widget->setFocusPolicy(Qt::NoFocus);
    auto apply = [widget, &box] {
        const QString text = Q(box.Text());
        if (widget->text() != text) {
            widget->setText(text);
            widget->setToolTip(text);
            widget->setCursorPosition(0);
        }
        ApplyLook(*widget, box);
    };
    // The walk writes the folder in work for every folder it meets.
    auto pacer = std::make_shared<RedrawPacer>(widget, apply);
    m_subscriptions.push_back(box.Changed.connect([pacer](Change) { pacer->Request(); }));
    apply();
    return widget;
}

QPlainTextEdit* SearchPageView::TextArea(TextBox& box, QWidget* parent) {
    auto* widget = new QPlainTextEdit(parent);
    widget->setObjectName(Q(box.Name()));
    widget->setReadOnly(true);
    widget->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto apply = [widget, &box] {
        const QString text = Q(box.Text());
        if (widget->toPlainText() != text) {
            // The newest line is the first; keep it in sight.
            widget->setPlainText(text);
            widget->verticalScrollBar()->setValue(0);
        }
        ApplyLook(*widget, box);
    };
    // Adding rewrites the progress for every file.
    auto pacer = std::make_shared<RedrawPacer>(widget, apply);
    m_subscriptions.push_back(box.Changed.connect([pacer](Change) { pacer->Request(); }));
    apply();
    return widget;
}

}  // namespace velmora
