// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/Theme.h"
#include "apps/desk/Icons.h"
#include "apps/desk/StatusChipDelegate.h"
#include "desks/modifyfile/DMS_ModifyFile_Widget.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGroupBox>
#include <QPainter>
#include <QRawFont>
#include <QSet>
#include <QStandardItemModel>
#include <QStyleOptionGroupBox>
#include <QTest>

using namespace KODMS::Host;

class ThemeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void contrastIsTheUsualMeasure();
    void textIsReadable_data();
    void textIsReadable();
    void sheetIsUnderstood();
    void titlesOfBoxesAreNotCovered();
    void fontShowsSimplifiedChinese();
    void emojiAreNoBoxes();
    void chipsAreReadableAndDistinct();
    void chipsPaintTheirColour();
    void noticeIconsDifferInShape();
};

void ThemeTest::initTestCase()
{
    Theme::apply(*qApp);
}

void ThemeTest::contrastIsTheUsualMeasure()
{
    QCOMPARE(Theme::contrast(Qt::black, Qt::white), 21.0);
    QCOMPARE(Theme::contrast(Qt::white, Qt::white), 1.0);
    // Grey 0x77 on white is the textbook's pair just below 4.5.
    QVERIFY(qAbs(Theme::contrast(QColor(0x77, 0x77, 0x77), Qt::white) - 4.48) < 0.01);
}

void ThemeTest::textIsReadable_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<double>("least");
    const QPalette p = Theme::palette();
    const auto row = [](const char *name, const QColor &text, const QColor &ground,
                        double least = 4.5) { QTest::newRow(name) << text << ground << least; };
    row("window text", p.color(QPalette::WindowText), p.color(QPalette::Window));
    row("field text", p.color(QPalette::Text), p.color(QPalette::Base));
    row("row of another colour", p.color(QPalette::Text), p.color(QPalette::AlternateBase));
    row("hint in a field", p.color(QPalette::PlaceholderText), p.color(QPalette::Base));
    row("button text", p.color(QPalette::ButtonText), p.color(QPalette::Button));
    row("selected text", p.color(QPalette::HighlightedText), p.color(QPalette::Highlight));
    row("tooltip", p.color(QPalette::ToolTipText), p.color(QPalette::ToolTipBase));
    row("link", p.color(QPalette::Link), p.color(QPalette::Window));
    row("secondary text", Colour::SubText, Colour::Window);
    row("error text", Colour::Bad, Colour::Window);
    row("job name of a receipt", Colour::Good, Colour::Window);
    row("banner", QColor(0x26, 0x26, 0x26), Colour::Caution);
    row("switched off", p.color(QPalette::Disabled, QPalette::WindowText), Colour::Window, 3.0);
    row("switched-off button", p.color(QPalette::Disabled, QPalette::ButtonText),
        QColor(0x50, 0x50, 0x50), 3.0);
    for (int level = 0; level <= 2; ++level)
        row(qPrintable(QStringLiteral("notice icon %1").arg(level)), Icons::noticeColour(level),
            Colour::Field, 3.0);
}

void ThemeTest::textIsReadable()
{
    QFETCH(QColor, text);
    QFETCH(QColor, ground);
    QFETCH(double, least);
    const double contrast = Theme::contrast(text, ground);
    QVERIFY2(contrast >= least, qPrintable(QString::number(contrast)));
}

void ThemeTest::sheetIsUnderstood()
{
    QVERIFY(!qApp->styleSheet().isEmpty());
    // A sheet that does not parse is announced as a warning, which fails this test.
    QWidget window;
    window.ensurePolished();
    QVERIFY(window.testAttribute(Qt::WA_WState_Polished));
}

/// The window that replaces a file brings a look of its own for its box.
void ThemeTest::titlesOfBoxesAreNotCovered()
{
    KODMS::UI::DMS_ModifyFile_Widget window(nullptr);
    window.show();
    const auto *box = window.findChild<QGroupBox *>();
    QVERIFY(!box->title().isEmpty());
    QStyleOptionGroupBox option;
    option.initFrom(box);
    option.text = box->title();
    option.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
    const QRect title =
        box->style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, box);
    const auto controls = box->findChildren<QWidget *>();
    QVERIFY(controls.size() > 3);
    for (const QWidget *control : controls)
        QVERIFY2(!control->geometry().intersects(title), qPrintable(control->objectName()));
}

void ThemeTest::fontShowsSimplifiedChinese()
{
    const QString family = QFontInfo(QApplication::font()).family();
    if (!QFontDatabase().families().contains(QStringLiteral("Noto Sans CJK SC")))
        QSKIP("the font package is not installed here");
    QCOMPARE(family, QStringLiteral("Noto Sans CJK SC"));
    const QRawFont raw = QRawFont::fromFont(QFont(QStringLiteral("Microsoft YaHei")));
    for (const QChar character : QStringLiteral("料号流程审核通过前处理机器人Ωμ"))
        QVERIFY2(raw.supportsCharacter(character), qPrintable(QString(character)));
}

void ThemeTest::emojiAreNoBoxes()
{
    if (!QFontDatabase().families().contains(QStringLiteral("Noto Color Emoji")))
        QSKIP("the font package is not installed here");
    QImage image(60, 40, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(QApplication::font());
    painter.drawText(image.rect(), Qt::AlignCenter, QStringLiteral("🚀"));
    painter.end();
    int coloured = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            coloured += QColor(image.pixel(x, y)).saturation() > 60 ? 1 : 0;
    }
    QVERIFY2(coloured > 10, qPrintable(QString::number(coloured)));
}

void ThemeTest::chipsAreReadableAndDistinct()
{
    QSet<int> shapes;
    for (const Qt::GlobalColor colour :
         {Qt::white, Qt::lightGray, Qt::red, Qt::green, Qt::darkGreen, Qt::blue}) {
        const auto chip = StatusChipDelegate::chipFor(QColor(colour));
        QVERIFY(Theme::contrast(chip.text, chip.background) >= 4.5);
        shapes.insert(static_cast<int>(chip.shape));
    }
    QCOMPARE(shapes.size(), 6);
}

void ThemeTest::chipsPaintTheirColour()
{
    QStandardItemModel model(1, 1);
    model.setItem(0, new QStandardItem(QStringLiteral("前处理未过")));
    model.item(0)->setForeground(QColor(Qt::red));
    QImage image(200, 30, QImage::Format_RGB32);
    image.fill(QColor(0x44, 0x44, 0x44));
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.font = QApplication::font();
    option.fontMetrics = QFontMetrics(option.font);
    QPainter painter(&image);
    StatusChipDelegate().paint(&painter, option, model.index(0, 0));
    painter.end();
    int chipPixels = 0;
    int redPixels = 0;
    const QRgb ground = StatusChipDelegate::chipFor(QColor(Qt::red)).background.rgb();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            chipPixels += image.pixel(x, y) == ground ? 1 : 0;
            redPixels += image.pixel(x, y) == QColor(Qt::red).rgb() ? 1 : 0;
        }
    }
    QVERIFY2(chipPixels > 800, qPrintable(QString::number(chipPixels)));
    QCOMPARE(redPixels, 0);
}

void ThemeTest::noticeIconsDifferInShape()
{
    const auto silhouette = [](int level) {
        return Icons::notice(level).pixmap(32, 32).toImage().createAlphaMask();
    };
    QVERIFY(silhouette(0) != silhouette(1));
    QVERIFY(silhouette(1) != silhouette(2));
    QVERIFY(silhouette(0) != silhouette(2));
}

KODMS_TEST_MAIN(ThemeTest, QApplication)
#include "ThemeTest.moc"
