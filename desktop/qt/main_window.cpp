#include "desktop/qt/main_window.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>
#include <QSystemTrayIcon>
#include <QTabBar>
#include <QTableView>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include "core/forms.h"
#include "desktop/pages.h"
#include "desktop/qt/catalogue_view.h"
#include "desktop/qt/control_look.h"
#include "desktop/qt/menu_view.h"
#include "desktop/qt/pictures.h"
#include "desktop/qt/rating_view.h"
#include "desktop/qt/tag_page_view.h"
#include "desktop/qt/result_list_view.h"
#include "desktop/qt/search_page_view.h"
#include "desktop/qt/track_list_model.h"
#include "desktop/qt/track_selection_mirror.h"
#include "desktop/qt/transport_view.h"
#include "platform/qt_shell.h"

namespace velmora {

namespace {

constexpr int kPageCount = 5;
// The stack entry that holds each page's frames: pages 0 and 1 share the
// place of Frame4 and Frame12.
constexpr std::array<int, kPageCount> kStackOfPage{0, 0, 1, 2, 3};

// The key codes the logic compares against (Esc 27, Enter 13, ...).
int KeyCode(const QKeyEvent& event) {
    const int key = event.key();
    if (key == Qt::Key_Space || (key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z)) {
        if ((event.modifiers() & Qt::KeypadModifier) && key >= Qt::Key_0 && key <= Qt::Key_9)
            return 96 + (key - Qt::Key_0);
        return key;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 112 + (key - Qt::Key_F1);
    switch (key) {
        case Qt::Key_Backspace: return 8;
        case Qt::Key_Tab:
        case Qt::Key_Backtab: return 9;
        case Qt::Key_Return:
        case Qt::Key_Enter: return 13;
        case Qt::Key_Shift: return 16;
        case Qt::Key_Control: return 17;
        case Qt::Key_Alt: return 18;
        case Qt::Key_Pause: return 19;
        case Qt::Key_CapsLock: return 20;
        case Qt::Key_Escape: return 27;
        case Qt::Key_PageUp: return 33;
        case Qt::Key_PageDown: return 34;
        case Qt::Key_End: return 35;
        case Qt::Key_Home: return 36;
        case Qt::Key_Left: return 37;
        case Qt::Key_Up: return 38;
        case Qt::Key_Right: return 39;
        case Qt::Key_Down: return 40;
        case Qt::Key_Insert: return 45;
        case Qt::Key_Delete: return 46;
        default: return 0;
    }
}

// Space and the arrows move in text where text is typed; elsewhere they steer playing.
bool TakesText(const QWidget* widget) {
    if (auto* edit = qobject_cast<const QLineEdit*>(widget)) return !edit->isReadOnly();
    // An editable combo box keeps the focus for its edit line.
    if (auto* combo = qobject_cast<const QComboBox*>(widget)) return combo->isEditable();
    if (qobject_cast<const QAbstractSpinBox*>(widget)) return true;
    if (auto* edit = qobject_cast<const QPlainTextEdit*>(widget)) return !edit->isReadOnly();
    if (auto* edit = qobject_cast<const QTextEdit*>(widget)) return !edit->isReadOnly();
    return false;
}

// The local files among the dragged addresses; a drag with none is refused.
std::vector<std::string> LocalFiles(const QMimeData* data) {
    std::vector<std::string> names;
    if (!data || !data->hasUrls()) return names;
    for (const QUrl& url : data->urls())
        if (url.isLocalFile()) names.push_back(url.toLocalFile().toStdString());
    return names;
}

}  // namespace

MainWindow::MainWindow(Form1& form, int& esc_key, QWidget* parent)
    : QMainWindow(parent), m_form(form), m_esc_key(esc_key) {
    setObjectName(QStringLiteral("Form1"));
    resize(1100, 700);

    m_menus = new MenuView(this);
    m_menus->Populate(*menuBar(), form.Menus.TopLevel());
    m_tray_menu = m_menus->BuildPopup(*form.Tray.TopLevel().front(), this);

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(BuildTransport());
    auto* split = m_split = new QSplitter(Qt::Horizontal, central);
    split->addWidget(BuildTrackList());
    auto* side = m_side = new QSplitter(Qt::Vertical, split);
    side->addWidget(BuildPages());
    side->addWidget(BuildLog());
    side->setStretchFactor(0, 3);
    side->setStretchFactor(1, 2);
    side->setSizes({380, 260});
    // The rating button, the class rows and the progress bar stand above the pages.
    side->insertWidget(0, new RatingView(m_form, side));
    // The tags, the album art and the search links stand below the pages.
    side->insertWidget(2, new TagPageView(m_form, side));
    split->addWidget(side);
    // The Track list is the window's main part.
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);
    split->setSizes({640, 440});
    layout->addWidget(split, 1);
    setCentralWidget(central);
    // Files dragged from the desktop's file manager join the Collection.
    setAcceptDrops(true);

    // Disabling is shown at once, so that no click reaches long work; the
    // rest waits for the loop's turn, by which a recount has enabled it again:
    // each change of the whole window's state walks every widget in it.
    m_subscriptions.push_back(form.Changed.connect([this](Change) {
        ApplyMousePointer();
        if (!m_form.Enabled() && isEnabled())
            ApplyForm();
        else
            m_form_pacer.Request();
    }));
    qApp->installEventFilter(this);
    ApplyForm();
    ApplyMousePointer();
}

MainWindow::~MainWindow() {
    qApp->removeEventFilter(this);
    if (m_wait_cursor) QApplication::restoreOverrideCursor();
    if (m_shell) {
        m_shell->RegisterOnTop(m_form.Name(), {});
        m_shell->TrayIcon().setContextMenu(nullptr);
    }
}

QWidget* MainWindow::BuildTransport() {
    m_transport = new TransportView(m_form, this);
    m_subscriptions.push_back(m_form.Command11.Changed.connect([this](Change) { ApplyPlayButton(); }));
    ApplyPlayButton();
    return m_transport;
}

QWidget* MainWindow::BuildTrackList() {
    m_model = new TrackListModel(m_form, this);
    m_tracks = new QTableView(this);
    m_tracks->setObjectName(Q(m_form.List2.Name()));
    m_tracks->setModel(m_model);
    m_tracks->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_tracks->setSelectionMode(m_form.List2.MultiSelect() ? QAbstractItemView::ExtendedSelection
                                                          : QAbstractItemView::SingleSelection);
    m_tracks->setShowGrid(false);
    m_tracks->setWordWrap(false);
    m_tracks->setAlternatingRowColors(true);
    m_tracks->setTextElideMode(Qt::ElideMiddle);
    m_tracks->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_tracks->setEditTriggers(QAbstractItemView::NoEditTriggers);

    // Every row the same height, fixed: the view then never measures rows,
    // and a list of tens of thousands shows at once.
    QHeaderView* rows = m_tracks->verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setMinimumSectionSize(1);
    rows->setDefaultSectionSize(m_tracks->fontMetrics().height() + 4);

    QHeaderView* columns = m_tracks->horizontalHeader();
    columns->hide();
    columns->setStretchLastSection(true);
    columns->setSectionResizeMode(QHeaderView::Interactive);
    const QFontMetrics metrics = m_tracks->fontMetrics();
    const std::array<const char*, TrackListModel::Path> widest{"000000", "WW", "000:00:00", "00000.00", "00000"};
    for (int c = 0; c < TrackListModel::Path; ++c)
        columns->resizeSection(c, metrics.horizontalAdvance(QLatin1String(widest[c])) + 12);

    connect(m_tracks->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &MainWindow::ViewSelectionChanged);
    connect(m_tracks->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (m_syncing || !current.isValid()) return;
                // The click is told after the selection it made is stored,
                // and Qt moves the current row before it selects.
                const int row = current.row();
                QTimer::singleShot(0, this, [this, row] {
                    m_applied_index = row;
                    m_form.List2.SetListIndex(row);
                });
            });
    connect(m_tracks, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
        if (!index.isValid()) return;
        // The click that began the double click may not have reached the box yet.
        if (m_form.List2.ListIndex() != index.row()) {
            m_applied_index = index.row();
            m_form.List2.SetListIndex(index.row());
        }
        m_form.List2.DblClick.emit();
    });
    m_selection = new TrackSelectionMirror(*m_tracks, m_form.List2, m_syncing);
    connect(m_model, &TrackListModel::SelectionChanged, this, &MainWindow::ApplySelection);
    for (int c = 0; c < TrackListModel::ColumnCount; ++c)
        m_subscriptions.push_back(m_model->Box(c).Changed.connect([this](Change kind) {
            if (kind == Change::Look) m_track_look_pacer.Request();
        }));
    ApplyTrackLook();

    // A newcomer's empty list says where media come from.
    auto* holder = new QWidget(this);
    auto* column = new QVBoxLayout(holder);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    m_empty_hint = new QLabel(Q(kEmptyCollectionHint), holder);
    m_empty_hint->setObjectName(QStringLiteral("EmptyHint"));
    m_empty_hint->setWordWrap(true);
    m_empty_hint->setStyleSheet(QStringLiteral("padding: 6px; font-style: italic;"));
    column->addWidget(m_empty_hint);
    column->addWidget(m_tracks, 1);
    m_subscriptions.push_back(m_form.List2.Changed.connect([this](Change) { ApplyEmptyHint(); }));
    ApplyEmptyHint();
    return holder;
}

void MainWindow::ApplyEmptyHint() {
    // A long loop adds a row at a time: touch the label only when it turns.
    const bool empty = m_form.List2.ListCount() == 0;
    if (m_empty_hint->isHidden() == empty) m_empty_hint->setVisible(empty);
}

void MainWindow::SaveLayout(QSettings& store) const {
    store.setValue(QStringLiteral("window/geometry"), saveGeometry());
    store.setValue(QStringLiteral("window/split"), m_split->saveState());
    store.setValue(QStringLiteral("window/side"), m_side->saveState());
    store.setValue(QStringLiteral("window/tracks"), m_tracks->horizontalHeader()->saveState());
}

void MainWindow::RestoreLayout(const QSettings& store) {
    // Anything missing or unreadable keeps the built-in layout.
    restoreGeometry(store.value(QStringLiteral("window/geometry")).toByteArray());
    m_split->restoreState(store.value(QStringLiteral("window/split")).toByteArray());
    m_side->restoreState(store.value(QStringLiteral("window/side")).toByteArray());
    m_tracks->horizontalHeader()->restoreState(store.value(QStringLiteral("window/tracks")).toByteArray());
}

QGroupBox* MainWindow::BuildFrame(CaptionControl& frame) {
    auto* box = new QGroupBox(this);
    box->setObjectName(Q(frame.Name()));
    auto* inside = new QVBoxLayout(box);
    inside->addStretch(1);
    auto apply = [box, &frame] {
        box->setTitle(MenuText(frame.Caption()));
        ApplyLook(*box, frame, QString());
    };
    m_subscriptions.push_back(frame.Changed.connect([this, apply](Change) {
        apply();
        UpdatePageTips();
    }));
    apply();
    return box;
}

QWidget* MainWindow::BuildPages() {
    auto* group = new QWidget(this);
    group->setObjectName(Q(m_form.MultiPage1.Name()));
    auto* column = new QVBoxLayout(group);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);

    m_page_tabs = new QTabBar(group);
    m_page_tabs->setExpanding(false);
    // A narrow side shortens the captions rather than hiding tabs behind arrows.
    m_page_tabs->setUsesScrollButtons(false);
    m_page_tabs->setElideMode(Qt::ElideRight);
    for (int page = 0; page < kPageCount; ++page) m_page_tabs->addTab(Q(Page_Caption(page)));
    column->addWidget(m_page_tabs);

    m_pages = new QStackedWidget(group);
    auto* shared = new QWidget(m_pages);
    auto* shared_column = new QVBoxLayout(shared);
    shared_column->setContentsMargins(0, 0, 0, 0);
    m_catalogue = new CatalogueView(m_form, m_pages);
    shared_column->addWidget(BuildFrame(m_form.Frame4));
    shared_column->addWidget(&m_catalogue->ManagingFrame());
    m_pages->addWidget(shared);
    m_search = new SearchPageView(m_form, m_pages);
    m_pages->addWidget(&m_search->SearchPage());
    m_pages->addWidget(&m_search->FoldersPage());
    // Each frame stands inside its page: the page group shows the page, the
    // frame's own visible state shows the frame.
    m_pages->addWidget(&m_catalogue->ResultsPage());
    for (CaptionControl* frame : {&m_form.Frame1, &m_form.Frame8, &m_form.Frame12, &m_form.Frame6})
        m_subscriptions.push_back(frame->Changed.connect([this](Change) { UpdatePageTips(); }));
    column->addWidget(m_pages, 1);

    connect(m_page_tabs, &QTabBar::currentChanged, this, [this](int page) {
        if (m_syncing || page < 0) return;
        m_form.MultiPage1.SetValue(page);
        // The handler may have sent the group to another page.
        ApplyPage();
    });
    m_subscriptions.push_back(m_form.MultiPage1.Changed.connect([this](Change) { ApplyPage(); }));
    ApplyPage();
    UpdatePageTips();
    return group;
}

QWidget* MainWindow::BuildLog() {
    m_log = new QPlainTextEdit(this);
    m_log->setObjectName(Q(m_form.Text2[0].Name()));
    m_log->setReadOnly(true);
    m_log->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_log_text = std::make_unique<NewestFirstText>(*m_log);
    m_subscriptions.push_back(m_form.Text2[0].Changed.connect([this](Change kind) {
        if (kind != Change::Contents) {
            ApplyLook(*m_log, m_form.Text2[0], QString());
            return;
        }
        // A long loop writes the log on every row.
        m_log_pacer.Request();
    }));
    ApplyLook(*m_log, m_form.Text2[0], QString());
    ApplyLog();
    return m_log;
}

void MainWindow::AttachShell(QtShell& shell) {
    m_shell = &shell;
    QSystemTrayIcon& tray = shell.TrayIcon();
    tray.setContextMenu(m_tray_menu);
    tray.setIcon(windowIcon());
    connect(&tray, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if ((reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) && m_on_tray_click)
            m_on_tray_click();
    });
    shell.RegisterOnTop(m_form.Name(), [this](bool on) { SetOnTop(on); });
}

// The hourglass is the whole program's while long work runs, over every
// window and the tray menu alike, and it must show before the work's first
// yield: set at once, not on the loop's next turn.
void MainWindow::ApplyMousePointer() {
    const bool wait = m_form.MousePointer() == FormState::kHourglass;
    if (wait == m_wait_cursor) return;
    m_wait_cursor = wait;
    if (wait)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void MainWindow::ApplyForm() {
    QScopedValueRollback guard(m_syncing, true);
    setWindowTitle(Q(m_form.Caption()));
    if (m_form.Enabled() != isEnabled()) {
        // A disabled window loses its focus; it comes back with the window.
        if (!m_form.Enabled()) m_focus_before = QApplication::focusWidget();
        setEnabled(m_form.Enabled());
        if (m_form.Enabled() && m_focus_before && !QApplication::focusWidget()) m_focus_before->setFocus();
    }
    if (m_form.Visible() != isVisible()) setVisible(m_form.Visible());
    if (!m_form.Visible()) return;
    Qt::WindowStates state = windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized);
    if (m_form.WindowState() == 1) state |= Qt::WindowMinimized;
    else if (m_form.WindowState() == 2) state |= Qt::WindowMaximized;
    if (state != windowState()) setWindowState(state);
}

void MainWindow::ApplyPlayButton() {
    // The window shows the state of play in its icon, and the tray with it.
    setWindowIcon(WindowPicture(m_form.Command11.Picture()));
    if (m_shell) m_shell->TrayIcon().setIcon(windowIcon());
}

void MainWindow::ApplyTrackLook() {
    // The five mirror boxes and the path box are hidden together around mass
    // changes; a box hidden alone hides its column.
    bool any_visible = false;
    for (int c = 0; c < TrackListModel::ColumnCount; ++c) {
        const bool visible = m_model->Box(c).Visible();
        m_tracks->setColumnHidden(c, !visible);
        any_visible = any_visible || visible;
    }
    m_tracks->setVisible(any_visible);
    m_tracks->setEnabled(m_form.List2.Enabled());
    m_tracks->setToolTip(Q(m_form.List2.ToolTip()));
}

void MainWindow::ApplySelection() {
    QScopedValueRollback guard(m_syncing, true);
    const ListBox& paths = m_form.List2;
    m_selection->Changed();
    QItemSelectionModel* model = m_tracks->selectionModel();

    const int index = paths.ListIndex();
    const QModelIndex current = m_model->index(index, 0);
    if (model->currentIndex().row() != index) model->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    if (index != m_applied_index) {
        m_applied_index = index;
        if (current.isValid()) m_tracks->scrollTo(current, QAbstractItemView::EnsureVisible);
    }
    if (paths.TopIndex() != m_applied_top) {
        m_applied_top = paths.TopIndex();
        const QModelIndex top = m_model->index(m_applied_top, 0);
        if (top.isValid()) m_tracks->scrollTo(top, QAbstractItemView::PositionAtTop);
    }
}

void MainWindow::ViewSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    if (m_syncing) return;
    ListBox& paths = m_form.List2;
    for (const QItemSelectionRange& range : deselected)
        for (int row = range.top(); row <= range.bottom(); ++row) paths.Store_Selected(row, false);
    for (const QItemSelectionRange& range : selected)
        for (int row = range.top(); row <= range.bottom(); ++row) paths.Store_Selected(row, true);
}

void MainWindow::ApplyPage() {
    QScopedValueRollback guard(m_syncing, true);
    const int page = m_form.MultiPage1.Value();
    if (page < 0 || page >= kPageCount) return;
    m_page_tabs->setCurrentIndex(page);
    m_pages->setCurrentIndex(kStackOfPage[page]);
    ApplyLook(*m_pages->parentWidget(), m_form.MultiPage1, QString());
}

void MainWindow::UpdatePageTips() {
    if (!m_page_tabs) return;
    const QString shared = Q(m_form.Frame4.Caption()) + (m_form.Frame4.Caption().empty() ? "" : "\n") +
                           Q(m_form.Frame12.Caption());
    const std::array<QString, kPageCount> tips{shared, shared, Q(m_form.Frame1.Caption()),
                                               Q(m_form.Frame8.Caption()), Q(m_form.Frame6.Caption())};
    for (int page = 0; page < kPageCount; ++page) m_page_tabs->setTabToolTip(page, tips[page]);
}

void MainWindow::ApplyLog() { m_log_text->Show(m_form.Text2[0].Text()); }

void MainWindow::SetOnTop(bool on) {
    const bool shown = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, on);
    // Changing the flags takes the window off the screen.
    if (shown) show();
}

CommandButton* MainWindow::ButtonForKey(const QKeyEvent& key) {
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    const bool plain = modifiers == Qt::NoModifier;
    const bool control = modifiers == Qt::ControlModifier;
    switch (key.key()) {
        case Qt::Key_Space: return plain ? &m_form.Command11 : nullptr;
        case Qt::Key_MediaTogglePlayPause:
        case Qt::Key_MediaPlay:
        case Qt::Key_MediaPause: return &m_form.Command11;
        case Qt::Key_MediaNext: return &m_form.Command3[0];
        case Qt::Key_MediaPrevious: return &m_form.Command3[1];
        // One Track with the arrow alone, the step count with Ctrl.
        case Qt::Key_Left: return plain ? &m_form.Command3[1] : control ? &m_form.Command15[1] : nullptr;
        case Qt::Key_Right: return plain ? &m_form.Command3[0] : control ? &m_form.Command15[0] : nullptr;
        default: return nullptr;
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    if (m_on_close) m_on_close();
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange || m_syncing) return;
    // The user minimised or maximised the window through the desktop.
    const Qt::WindowStates state = windowState();
    m_form.SetWindowState(state & Qt::WindowMinimized ? 1 : state & Qt::WindowMaximized ? 2 : 0);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!LocalFiles(event->mimeData()).empty()) event->acceptProposedAction();
}

void MainWindow::dragMoveEvent(QDragMoveEvent* event) {
    if (!LocalFiles(event->mimeData()).empty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    std::vector<std::string> names = LocalFiles(event->mimeData());
    if (names.empty()) return;
    event->acceptProposedAction();
    // The file manager waits for the drop to end; the files are taken in
    // when the loop next turns, not while it waits.
    QTimer::singleShot(0, this, [this, names = std::move(names)] {
        if (m_on_drop) m_on_drop(names);
    });
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QMainWindow::eventFilter(watched, event);
    auto* widget = qobject_cast<QWidget*>(watched);
    // A key ignored by a widget travels on to its parents; count it once,
    // where it was first delivered.
    QWidget* receiver = QApplication::focusWidget() ? QApplication::focusWidget() : this;
    if (!widget || widget != receiver || widget->window() != this) return QMainWindow::eventFilter(watched, event);

    const auto& key = static_cast<const QKeyEvent&>(*event);
    m_esc_key = KeyCode(key);
    if (TakesText(widget)) return QMainWindow::eventFilter(watched, event);
    // The catalogue's lists scroll their long rows sideways with the arrows.
    if (qobject_cast<ResultListView*>(widget) && (key.key() == Qt::Key_Left || key.key() == Qt::Key_Right))
        return QMainWindow::eventFilter(watched, event);
    if (CommandButton* button = ButtonForKey(key)) {
        if (button->Enabled() && button->Visible()) button->Click.emit();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace velmora
