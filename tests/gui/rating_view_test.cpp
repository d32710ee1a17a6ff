// The rating area over a whole program on the test doubles: Tracks rated by
// the button, the stars and class totals the logic sets, drawn offscreen.

#include <QApplication>
#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

#include <string>

#include "app/startup.h"
#include "core/progress.h"
#include "desktop/qt/rating_view.h"
#include "desktop/qt/star_pictures.h"
#include "gui_support.h"
#include "ratings/rating_marks.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {

QString Q(const std::string& text) { return QString::fromStdString(text); }

bool ShowsPicture(const QLabel& label, const std::string& key, int size) {
    const QPixmap expected = StarPixmap(key, size);
    return !expected.isNull() && label.pixmap().toImage() == expected.toImage();
}

// A started program with five Tracks of mixed classes, the rating area over it.
class RatedTracks : public ::testing::Test {
protected:
    RatedTracks() {
        Form_Load(app.ctx);
        const int classes[] = {5, 4, 0, 4, 1};  // S A - A X
        std::vector<testing::TrackRow> rows;
        for (int i = 0; i < 5; ++i)
            rows.push_back({"/music/Μουσική/" + std::to_string(i + 1) + " - Τραγούδι.mp3", 200.0 + 37 * i,
                            classes[i], 420.0 + 90 * i});
        testing::Fill_Tracks(app.ctx, rows);
        app.ctx.table.Current_Track = 2;
        view.resize(460, view.sizeHint().height());
        view.show();
        QApplication::processEvents();
    }

    // The area redraws what changed on the loop's next turn.
    void Drawn() { QApplication::processEvents(); }

    testing::TestApp app;
    Form1& f = app.ctx.form1;
    RatingView view{f};
};

TEST_F(RatedTracks, ThePressRatesAndTheAreaShowsWhatTheLogicSet) {
    view.RateButton().click();  // Unmarked -> X
    view.RateButton().click();  // X -> C
    ASSERT_EQ(app.ctx.table.Rating_Class[2], 2);
    Drawn();

    for (const int scheme : {1, 3}) {
        MnumoreStar_Colors_Click(app.ctx, scheme);
        Drawn();
        EXPECT_TRUE(ShowsPicture(view.BigStar(), f.Picture2.Picture(), RatingView::kBigStarSize)) << scheme;
        for (int slot = 1; slot <= 6; ++slot) {
            const Label& star = f.Label21[slot - 1];
            EXPECT_TRUE(ShowsPicture(view.Star(slot), star.Picture(), RatingView::kStarSize)) << star.Picture();
            // Class C sits in slot 3, sunken; the others are flat.
            EXPECT_EQ(view.Star(slot).frameShadow(), slot == 3 ? QFrame::Sunken : QFrame::Plain) << slot;
        }
        testing::Save_Drawing(view, scheme == 1 ? "rating_view.png" : "rating_view_mix.png");
    }

    EXPECT_EQ(view.RateButton().text(), Q(f.Command8.Caption()));
    EXPECT_TRUE(view.RateButton().text().startsWith(QStringLiteral("Προτίμηση Rating C")) &&
                view.RateButton().isChecked());
    const QColor marked = view.palette().color(QPalette::Highlight);
    for (int index = 0; index <= 6; ++index) {
        EXPECT_FALSE(f.Label9[index].Caption().empty());
        EXPECT_EQ(view.Totals(index).text(), Q(f.Label9[index].Caption())) << index;
        EXPECT_EQ(view.Totals(index).palette().color(QPalette::Window) == marked, index == 3) << index;
    }
    for (int slot = 1; slot <= 6; ++slot) {
        EXPECT_EQ(view.Head(slot).text(), QString(QStringLiteral("-XCBAS")[slot - 1]));
        EXPECT_EQ(view.Head(slot).palette().color(QPalette::Window) == marked, slot == 3) << slot;
    }

    // Round to Unmarked: the button comes up while the Unmarked star sinks.
    for (int press = 0; press < 4; ++press) view.RateButton().click();
    Drawn();
    EXPECT_EQ(std::tuple(app.ctx.table.Rating_Class[2], view.RateButton().isChecked()), std::tuple(int16_t{0}, false));
    EXPECT_EQ(std::tuple(view.Star(1).frameShadow(), view.Star(3).frameShadow()),
              std::tuple(QFrame::Sunken, QFrame::Plain));
    EXPECT_NE(view.Totals(3).palette().color(QPalette::Window), marked);
    testing::Save_Drawing(view, "rating_view_unmarked.png");
}

TEST_F(RatedTracks, EveryPictureTheLogicNamesIsDrawnInItsShade) {
    for (const char* key : {"star_0_100", "star_0_121", "star_1_599", "star_2_620", "star_4_600", "star_0_6O0",
                            "star_0_", "star_00_600", "play", ""})
        EXPECT_TRUE(StarPixmap(key, 16).isNull()) << key;

    // Whatever scheme and class, every picture is drawn, the big one is of
    // the class and the row runs from Unmarked to S.
    for (int scheme = 0; scheme < 4; ++scheme) {
        MnumoreStar_Colors_Click(app.ctx, scheme);
        for (int rating = 0; rating < 6; ++rating) {
            Draw_Rating_Stars(app.ctx, 0, rating);
            const auto big = StarFromKey(f.Picture2.Picture());
            ASSERT_TRUE(big && big->big && !StarPixmap(f.Picture2.Picture(), 16).isNull()) << f.Picture2.Picture();
            EXPECT_EQ(big->slot, rating + 1) << f.Picture2.Picture();
            for (int slot = 1; slot <= 6; ++slot) {
                const auto star = StarFromKey(f.Label21[slot - 1].Picture());
                ASSERT_TRUE(star && !star->big && !StarPixmap(f.Label21[slot - 1].Picture(), 16).isNull())
                    << f.Label21[slot - 1].Picture();
                EXPECT_EQ(star->slot, slot) << f.Label21[slot - 1].Picture();
            }
        }
    }

    // The shade reaches the pixels: the heart of a gold star is warm, of a
    // blue one cool, of a black blue one dark.
    auto heart = [](int number) { return StarPixmap(Star_Picture(0, number), 40).toImage().pixelColor(20, 22); };
    EXPECT_GT(heart(605).red(), heart(605).blue() + 80);
    EXPECT_GT(heart(606).blue(), heart(606).red() + 80);
    EXPECT_LT(heart(607).lightness(), 80);
    EXPECT_EQ(StarFromKey("star_3_615")->shade, StarShade::Mix);
}

TEST_F(RatedTracks, TheBarAndTheStarsFollowTheirControls) {
    Show_Progress(f, 1, 3, 0);
    Drawn();
    EXPECT_EQ(std::tuple(view.Progress().Percent(), view.Progress().Text()), std::tuple(33, QStringLiteral("033%")));
    testing::Save_Drawing(view, "rating_view_progress.png");
    f.Label11[0].SetVisible(false);
    Drawn();
    EXPECT_EQ(view.Progress().Text(), QString());
    f.Shape1[0].SetVisible(false);
    Drawn();
    EXPECT_TRUE(view.Progress().isHidden());

    MnumoreStar_Active_Click(app.ctx, 0);
    Drawn();
    const bool shown = f.Label21[0].Visible();
    for (int slot = 1; slot <= 6; ++slot) EXPECT_EQ(view.Star(slot).isHidden(), !shown) << slot;
    MnumoreStar_Active_Click(app.ctx, 0);
    Drawn();
    for (int slot = 1; slot <= 6; ++slot) EXPECT_EQ(view.Star(slot).isHidden(), shown) << slot;

    f.Command8.SetEnabled(false);
    Drawn();
    EXPECT_FALSE(view.RateButton().isEnabled());
}

}  // namespace
}  // namespace velmora
