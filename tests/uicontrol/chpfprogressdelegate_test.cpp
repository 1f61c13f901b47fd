#include "table/chpfprogressdelegate.h"

#include <gtest/gtest.h>

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include "zb/cuiresource.h"

namespace {

class OpenDelegate : public KV::CHpfProgressDelegate
{
public:
    OpenDelegate() : KV::CHpfProgressDelegate(3, nullptr) {}
    using KV::CHpfProgressDelegate::handlePaint;
};

/// Where the bar of a text ends and begins in a cell of 200 by 10 pixels that starts at (20, 5), as "left..right";
/// "none" without a bar; with "?" behind when anything else than whole columns of the cell was painted.
std::string bar(const QString &text)
{
    QImage picture(300, 20, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setBrush(Qt::green);
    const QBrush before = painter.brush();
    const QRect cell(20, 5, 200, 10);
    OpenDelegate().handlePaint(text, cell, &painter, false);
    const bool restored = painter.brush() == before;
    painter.end();

    int first = -1;
    int last = -1;
    bool whole = restored;
    for (int x = 0; x < picture.width(); ++x) {
        int painted = 0;
        for (int y = 0; y < picture.height(); ++y) {
            const bool here = picture.pixel(x, y) != qRgb(255, 255, 255);
            painted += here ? 1 : 0;
            whole = whole && (!here || cell.contains(x, y));
        }
        whole = whole && (painted == 0 || painted == cell.height());
        if (painted > 0) {
            first = first < 0 ? x : first;
            last = x;
        }
    }
    const std::string end = whole ? "" : "?";
    return first < 0 ? "none" + end : std::to_string(first) + ".." + std::to_string(last) + end;
}

} // namespace

TEST(HpfProgressDelegate, TheBarIsAsLongAsTheDoneShareOfTheTotal)
{
    const std::pair<const char *, const char *> cases[] = {{"50 / 100", "20..119"},
                                                           {"1.5万 / 3万", "20..119"},
                                                           {"1 / 3", "20..85"},
                                                           {"100 / 100", "20..219"},
                                                           {"200 / 100", "20..219"},
                                                           {"1e300 / 1e-300", "20..219"},
                                                           {"inf / inf", "20..219"},
                                                           {"1 / 1000", "none"},
                                                           {"0 / 100", "none"},
                                                           {"50 / 0", "none"},
                                                           {"-50 / 100", "none"},
                                                           {"50 / -100", "none"},
                                                           {"nan / 100", "none"},
                                                           {"5万万 / 10", "none"},
                                                           {"50/100", "none"},
                                                           {"50 / 100 / 200", "none"},
                                                           {"a / b", "none"},
                                                           {" / ", "none"},
                                                           {"", "none"},
                                                           {"-", "none"}};
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(bar(QString::fromUtf8(text)), expected) << text;
}

TEST(HpfProgressDelegate, TheBarHasItsColourAndTheTextStaysAsItIs)
{
    QImage picture(10, 10, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    OpenDelegate delegate;
    EXPECT_TRUE(delegate.paintCell({0, 3, QStringLiteral("1 / 1"), picture.rect()}, &painter));
    painter.end();
    QImage expected = picture;
    expected.fill(*ZB::CUiResource::instance()->getColor(QStringLiteral("clr_task_progress_background")));
    EXPECT_EQ(picture, expected);
    EXPECT_EQ(delegate.getText(QStringLiteral("1.5万 / 3万")), QStringLiteral("1.5万 / 3万"));
    EXPECT_EQ(delegate.columnId(), 3);
}
