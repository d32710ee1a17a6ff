// The tag page drawn offscreen over a program on the test doubles: album art
// from files whole and damaged, and a tag edit handed over once it is finished.

#include <QBuffer>
#include <QImage>
#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

#include <string>

#include "app/startup.h"
#include "desktop/qt/art_pixmap.h"
#include "desktop/qt/tag_page_view.h"
#include "gui_support.h"
#include "metadata/album_art.h"
#include "support/test_app.h"

namespace velmora {
namespace {

std::string Jpeg() {
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG");
    return bytes.toStdString();
}

TEST(TagPageView, WholePicturesShowDamagedOnesNothingAndTheBoxTakesTheTextWhenTheEditIsFinished) {
    testing::TestApp app;
    const std::string whole = Jpeg();
    ASSERT_GT(whole.size(), 100u);
    const auto file = [&](const char* name, const std::string& bytes) {
        const auto path = app.folder.Path() / name;
        testing::Put(path, bytes);
        return path.string();
    };
    EXPECT_EQ(ArtPixmap(file("whole.jpg", whole)).size(), QSize(40, 30));
    EXPECT_EQ(ArtPixmap(kEmbeddedPicture + whole).size(), QSize(40, 30));
    for (const std::string& damaged : {whole.substr(0, whole.size() / 2), whole.substr(0, 20),
                                       std::string("\xFF\xD8\xFF\xE0") + std::string(500, 'x'), std::string()})
        EXPECT_TRUE(ArtPixmap(file("damaged.jpg", damaged)).isNull()) << damaged.size() << " bytes";
    EXPECT_TRUE(ArtPixmap((app.folder.Path() / "none.jpg").string()).isNull());

    Form_Load(app.ctx);
    TagPageView view(app.ctx.form1, nullptr);
    app.ctx.form1.Picture1.SetPicture(file("AlbumArtSmall.jpg", whole));
    EXPECT_FALSE(view.Art().pixmap().isNull());
    app.ctx.form1.Picture1.SetPicture(file("Folder.jpg", whole.substr(0, whole.size() - 40)));
    EXPECT_TRUE(view.Art().pixmap().isNull());

    int changes = 0;
    auto count = app.ctx.form1.Text1[0].Changed.connect([&](Change kind) { changes += kind == Change::Contents; });
    auto& edit = testing::Child<QLineEdit>(view, "Text1_0");
    edit.setText("Ωδ");
    edit.setText("Ωδή");
    EXPECT_EQ(changes, 0);
    Q_EMIT edit.editingFinished();
    Q_EMIT edit.editingFinished();
    EXPECT_EQ(std::tuple(changes, app.ctx.form1.Text1[0].Text()), std::tuple(1, std::string("Ωδή")));
}

}  // namespace
}  // namespace velmora
