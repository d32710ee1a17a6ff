#pragma once
// The tag page beside the pages: the five tag boxes and the genre list with
// their captions, the save button, the album art, and the search links.

#include <QWidget>

#include <vector>

#include "base/signal.h"

class QLabel;

namespace velmora {

struct Form1;

class TagPageView : public QWidget {
    Q_OBJECT

public:
    TagPageView(Form1& form, QWidget* parent);

    QLabel& Art() const { return *m_art; }

private:
    QWidget* BuildTags();
    QWidget* BuildLinks();
    void ApplyArt();

    Form1& m_form;
    QLabel* m_art = nullptr;
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
