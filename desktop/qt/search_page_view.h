#pragma once
// The search page: the drive, folder and file boxes, the media types, the
// add and remove buttons (Frame1, with the subfolder switch, the stop button
// and the progress lines beside it) and the folders a search found (Frame8).
// It draws Form1's controls and raises their signals; the handlers decide.

#include <QListWidget>
#include <QObject>

#include <vector>

#include "base/signal.h"
#include "desktop/qt/redraw_pacer.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace velmora {

struct Form1;
class CaptionControl;
class Control;
class FileSystemBox;
class ListBox;
class TextBox;
class ValueControl;

// A list box drawn in a list widget. The box may change on every row of a
// long loop; the widget follows at most twenty times a second, and
// not at all while the box is hidden, so a box filled out of sight is drawn
// once, when it is shown. A change of the user's selection is stored in the
// box and told as one Click, with the list index at the current row.
class ListBoxWidget : public QListWidget {
    Q_OBJECT

public:
    ListBoxWidget(ListBox& box, QWidget* parent);

private:
    void Schedule();
    void Flush();
    void ApplySelection();
    void ViewSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);

    ListBox& m_box;
    bool m_contents_dirty = true;
    bool m_selection_dirty = true;
    RedrawPacer m_pacer{this, [this] { Flush(); }};
    bool m_click_pending = false;
    bool m_syncing = false;
    std::vector<Subscription> m_subscriptions;
};

// The folder box: the folders from the root down to its path, open, then the
// subfolders it lists. Activating a row (double click, Enter) moves the box
// to that folder, as the user's change of its path.
class FolderBoxWidget : public QListWidget {
    Q_OBJECT

public:
    FolderBoxWidget(FileSystemBox& box, QWidget* parent);

private:
    void Schedule();
    void Flush();

    FileSystemBox& m_box;
    RedrawPacer m_pacer{this, [this] { Flush(); }};
    std::vector<Subscription> m_subscriptions;
};

class SearchPageView : public QObject {
    Q_OBJECT

public:
    // The widgets are made as children of parent; the window places them.
    SearchPageView(Form1& form, QWidget* parent);

    // Frame1 with the subfolder switch, the stop button and the progress
    // lines below it: one page.
    QWidget& SearchPage() const { return *m_search_page; }
    // Frame8, the folders found and the choices over them: one page.
    QWidget& FoldersPage() const { return *m_folders_page; }

private:
    QGroupBox* BuildSearchFrame(QWidget* parent);
    QGroupBox* BuildFoldersFrame(QWidget* parent);
    QComboBox* DriveBox(QWidget* parent);
    QPushButton* Button(CaptionControl& button, const QString& design_caption, QWidget* parent);
    QCheckBox* Check(ValueControl& check, const QString& design_caption, QWidget* parent);
    // Two option buttons of one group: choosing one clears the other.
    void OptionPair(ValueControl& first, ValueControl& second, const QString& first_caption,
                    const QString& second_caption, QWidget* parent, QRadioButton*& first_widget,
                    QRadioButton*& second_widget);
    QLineEdit* LineBox(TextBox& box, QWidget* parent);
    QPlainTextEdit* TextArea(TextBox& box, QWidget* parent);

    Form1& m_form;
    QWidget* m_search_page = nullptr;
    QWidget* m_folders_page = nullptr;
    bool m_syncing = false;  // the widgets are being set from the controls
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
