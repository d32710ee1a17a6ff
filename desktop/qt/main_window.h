#pragma once
// The main window: draws Form1's controls and hands clicks and keys back to
// them. What a click means is for the handlers connected to the controls.

#include <QMainWindow>
#include <QPointer>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/signal.h"
#include "desktop/qt/newest_first_text.h"
#include "desktop/qt/redraw_pacer.h"

class QGroupBox;
class QItemSelection;
class QDragEnterEvent;
class QDragMoveEvent;
class QDropEvent;
class QKeyEvent;
class QLabel;
class QSettings;
class QSplitter;
class QMenu;
class QPlainTextEdit;
class QStackedWidget;
class QTabBar;
class QTableView;

namespace velmora {

struct Form1;
class CaptionControl;
using CommandButton = CaptionControl;
class CatalogueView;
class MenuView;
class QtShell;
class SearchPageView;
class TrackListModel;
class TrackSelectionMirror;
class TransportView;

class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    // esc_key receives the code of every key pressed in the window.
    MainWindow(Form1& form, int& esc_key, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Gives the tray icon its menu and picture, and lets the shell keep this
    // window on top.
    void AttachShell(QtShell& shell);
    // A left click (or double click) on the tray icon.
    void SetTrayClickHandler(std::function<void()> handler) { m_on_tray_click = std::move(handler); }
    // The user closes the window.
    void SetCloseHandler(std::function<void()> handler) { m_on_close = std::move(handler); }
    // Local files dropped on the window, their paths in UTF-8.
    using DropHandler = std::function<void(const std::vector<std::string>&)>;
    void SetDropHandler(DropHandler handler) { m_on_drop = std::move(handler); }

    // The window's size, the splitters and the Track list's column widths,
    // kept between runs apart from the preferences file.
    void SaveLayout(QSettings& store) const;
    void RestoreLayout(const QSettings& store);
    // The line shown over an empty Track list.
    const QLabel& EmptyHint() const { return *m_empty_hint; }

    QTableView& TrackView() const { return *m_tracks; }
    TransportView& Transport() const { return *m_transport; }
    TrackListModel& TrackModel() const { return *m_model; }
    SearchPageView& SearchPage() const { return *m_search; }
    CatalogueView& Catalogue() const { return *m_catalogue; }
    const MenuView& MenuActions() const { return *m_menus; }
    QMenu& TrayMenu() const { return *m_tray_menu; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* BuildTransport();
    QWidget* BuildTrackList();
    QWidget* BuildPages();
    QWidget* BuildLog();
    QGroupBox* BuildFrame(CaptionControl& frame);

    void ApplyForm();
    void ApplyMousePointer();
    void ApplyPlayButton();
    void ApplyTrackLook();
    void ApplyEmptyHint();
    void ApplySelection();
    void ApplyPage();
    void ApplyLog();
    void UpdatePageTips();
    void ViewSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);
    void SetOnTop(bool on);
    // The transport button a key presses, or null.
    CommandButton* ButtonForKey(const QKeyEvent& key);

    Form1& m_form;
    int& m_esc_key;
    QtShell* m_shell = nullptr;

    MenuView* m_menus = nullptr;
    QMenu* m_tray_menu = nullptr;
    TransportView* m_transport = nullptr;
    SearchPageView* m_search = nullptr;
    CatalogueView* m_catalogue = nullptr;
    TrackListModel* m_model = nullptr;
    QTableView* m_tracks = nullptr;
    TrackSelectionMirror* m_selection = nullptr;
    QLabel* m_empty_hint = nullptr;
    QSplitter* m_split = nullptr;
    QSplitter* m_side = nullptr;
    QTabBar* m_page_tabs = nullptr;
    QStackedWidget* m_pages = nullptr;
    QPlainTextEdit* m_log = nullptr;
    std::unique_ptr<NewestFirstText> m_log_text;

    std::function<void()> m_on_tray_click;
    std::function<void()> m_on_close;
    DropHandler m_on_drop;

    bool m_syncing = false;       // the view is being set from the controls
    bool m_wait_cursor = false;   // the hourglass is set over the application
    RedrawPacer m_log_pacer{this, [this] { ApplyLog(); }};
    RedrawPacer m_form_pacer{this, [this] { ApplyForm(); }, 0};
    QPointer<QWidget> m_focus_before;  // the focus when the logic disabled the window
    // A recount hides the Track list's columns and shows them again within
    // one handler: applied at once, each would lay the table out anew.
    RedrawPacer m_track_look_pacer{this, [this] { ApplyTrackLook(); }, 0};
    int m_applied_index = -1;     // the list index last shown
    int m_applied_top = 0;        // the top row last shown
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
