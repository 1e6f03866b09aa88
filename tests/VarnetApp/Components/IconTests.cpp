#include "VarnetApp/Components/IconItem.h"
#include "VarnetApp/Components/IconPaths.h"
#include "VarnetApp/Components/PathData.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace varnet::test {

namespace {

QImage drawn(const QString& name, int size, double ratio) {
    QImage image(QSize(size, size) * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintIcon(painter, name, Qt::white, {0, 0}, size);
    return image;
}

bool borderIsEmpty(const QImage& image) {
    for (int i = 0; i < image.width(); ++i) {
        if (qAlpha(image.pixel(i, 0)) + qAlpha(image.pixel(i, image.height() - 1)) +
                qAlpha(image.pixel(0, i)) + qAlpha(image.pixel(image.width() - 1, i)) >
            0)
            return false;
    }
    return true;
}

bool isEmpty(const QImage& image) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 0) return false;
    return true;
}

int warningCount = 0;

} // namespace

// An arc read wrongly swings far out of its icon; a command read wrongly cuts it off.
TEST(IconTests, everyIconStaysInsideItsSquareAndIsReadToItsEnd) {
    ASSERT_GE(iconNames().size(), 60U);
    for (const std::string_view name : iconNames()) {
        const QPainterPath path = pathFromData(iconPathData(name));
        const QRectF bounds = path.boundingRect();
        EXPECT_TRUE(bounds.left() >= 2 && bounds.top() >= 2 && bounds.right() <= 18 && bounds.bottom() <= 18)
            << name << ' ' << bounds.left() << ' ' << bounds.top() << ' ' << bounds.right() << ' '
            << bounds.bottom();
        EXPECT_GT(std::max(bounds.width(), bounds.height()), 8) << name;
        const QImage image =
            drawn(QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())), 20, 2);
        EXPECT_FALSE(isEmpty(image)) << name;
        EXPECT_TRUE(borderIsEmpty(image)) << name;
    }
}

TEST(IconTests, anUnknownNameDrawsNothingAndComplainsOnce) {
    warningCount = 0;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++warningCount; });
    EXPECT_TRUE(isEmpty(drawn(QStringLiteral("unicorn"), 16, 1)));
    EXPECT_TRUE(isEmpty(drawn(QStringLiteral("unicorn"), 16, 1)));
    EXPECT_TRUE(isEmpty(drawn(QString(), 16, 1)));
    qInstallMessageHandler(nullptr);
    EXPECT_EQ(warningCount, 1);
}

} // namespace varnet::test
