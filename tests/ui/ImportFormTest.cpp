// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/imports/ImportForm.h"

#include "services/ui/imports/ImportDropArea.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;

/// How the import window is laid out, and where it takes drops.
class ImportFormTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void thePlaceIsLargeUntilSomethingIsShown();
    void everyStepIsNamed();
    void aLongNameKeepsBothEnds();
    void takesADropAnywhere();
    void aDroppedFileIsNotMoved();
    void takesNoDropAtWork();
    void hoveringIsSeen();
    void namesOfFilesAreNoMarkup();
    void aNameDoesNotReadBackwards();

private:
    template <typename Control> Control *control(const char *name) const
    {
        return m_form->findChild<Control *>(QLatin1String(name));
    }

    ImportDropArea *area() const { return m_form->findChild<ImportDropArea *>(); }

    QMimeData *oneFile() const;
    bool enter(QWidget *where) const;
    bool drop(QWidget *where) const;

    std::unique_ptr<ImportForm> m_form;
    QTemporaryDir m_dir;
};

namespace {

ReadJob someJob(const QString &path)
{
    ReadJob read;
    read.path = path;
    read.job.name = QStringLiteral("board");
    read.job.steps = QStringList(QStringLiteral("pcb"));
    return read;
}

} // namespace

void ImportFormTest::init()
{
    m_form = std::make_unique<ImportForm>(ImportKind::PreparedJob, nullptr);
    m_form->resize(600, 400);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form.get()));
}

void ImportFormTest::cleanup()
{
    m_form.reset();
}

QMimeData *ImportFormTest::oneFile() const
{
    auto *data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(m_dir.path())});
    return data;
}

/// Whether a drop is welcome there.
bool ImportFormTest::enter(QWidget *where) const
{
    const std::unique_ptr<QMimeData> data(oneFile());
    QDragEnterEvent event(QPoint(5, 5), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    event.setAccepted(false);
    QApplication::sendEvent(where, &event);
    return event.isAccepted();
}

/// Whether it was taken. Qt gives it to whoever took what entered last.
bool ImportFormTest::drop(QWidget *where) const
{
    const std::unique_ptr<QMimeData> data(oneFile());
    QDropEvent event(QPointF(5, 5), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    event.setAccepted(false);
    QApplication::sendEvent(where, &event);
    return event.isAccepted();
}

void ImportFormTest::thePlaceIsLargeUntilSomethingIsShown()
{
    auto *details = control<QScrollArea>("importDetails");
    QVERIFY(details->isHidden());
    QVERIFY(area()->height() > 200);
    m_form->showJob(someJob(QStringLiteral("/a/board.tgz")));
    QTRY_VERIFY(area()->height() < 100);
    QVERIFY(details->isVisible());
    QVERIFY(details->height() > 150);
    m_form->showRefusal(QStringLiteral("/a/other.tgz"), QStringLiteral("no"));
    QVERIFY(details->isHidden());
    QTRY_VERIFY(area()->height() > 200);
}

void ImportFormTest::everyStepIsNamed()
{
    ReadJob read = someJob(QStringLiteral("/a/board.tgz"));
    read.job.steps = QStringList({QStringLiteral("orig"), QStringLiteral("单元")});
    m_form->showJob(read);
    QCOMPARE(control<QLabel>("importSteps")->text(), QStringLiteral("orig，单元"));
}

void ImportFormTest::aLongNameKeepsBothEnds()
{
    const QString name =
        QStringLiteral("first") + QString(300, QLatin1Char('x')) + QStringLiteral("last.tgz");
    m_form->showJob(someJob(QStringLiteral("/a/") + name));
    const auto *label = control<QLabel>("importPath");
    QTRY_VERIFY(label->text().startsWith(QLatin1String("first")) &&
                label->text().endsWith(QLatin1String("last.tgz")));
    QVERIFY(label->text().size() < name.size());
    QVERIFY(label->fontMetrics().horizontalAdvance(label->text()) <= label->width());
    QCOMPARE(label->accessibleName(), name);
    QVERIFY(label->toolTip().contains(name));
    m_form->resize(6000, 400);
    QTRY_COMPARE(label->text(), name);
}

void ImportFormTest::takesADropAnywhere()
{
    const QSignalSpy chosen(m_form.get(), &ImportForm::pathChosen);
    auto *heading = control<QLabel>("importTarget");
    for (QWidget *where : {static_cast<QWidget *>(area()), static_cast<QWidget *>(heading)})
        QVERIFY(enter(where) && drop(where));
    QVERIFY(enter(m_form.get()) && drop(m_form.get()));
    QCOMPARE(chosen.size(), 3);
    QCOMPARE(chosen.first().first().toString(), m_dir.path());
}

/// Whoever drags with Shift offers to move, and would remove what was taken.
void ImportFormTest::aDroppedFileIsNotMoved()
{
    const std::unique_ptr<QMimeData> data(oneFile());
    const Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(QPoint(5, 5), offered, data.get(), Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(enter.proposedAction(), Qt::MoveAction);
    QApplication::sendEvent(m_form.get(), &enter);
    QVERIFY(enter.isAccepted());
    QCOMPARE(enter.dropAction(), Qt::CopyAction);
    QDropEvent event(QPointF(5, 5), offered, data.get(), Qt::LeftButton, Qt::ShiftModifier);
    QApplication::sendEvent(m_form.get(), &event);
    QVERIFY(event.isAccepted());
    QCOMPARE(event.dropAction(), Qt::CopyAction);
}

void ImportFormTest::takesNoDropAtWork()
{
    const QSignalSpy chosen(m_form.get(), &ImportForm::pathChosen);
    QVERIFY(enter(m_form.get()));
    m_form->setWorking(true);
    QVERIFY(!drop(m_form.get())); // it hovered when the work began
    QVERIFY(!enter(m_form.get()));
    QVERIFY(!enter(area()));
    QCOMPARE(chosen.size(), 0);
    m_form->setWorking(false);
    QVERIFY(enter(m_form.get()) && drop(m_form.get()));
}

void ImportFormTest::hoveringIsSeen()
{
    const QRect edge(0, 0, area()->width(), 4); // without the buttons, one of which has the focus
    const QImage before = area()->grab(edge).toImage();
    QVERIFY(enter(m_form.get()));
    QVERIFY(area()->grab(edge).toImage() != before);
    QDragLeaveEvent leave;
    QApplication::sendEvent(m_form.get(), &leave);
    QCOMPARE(area()->grab(edge).toImage(), before);
}

void ImportFormTest::namesOfFilesAreNoMarkup()
{
    m_form->showRefusal(QStringLiteral("/a/<b>x<i>.tgz"), QStringLiteral("<u>no"));
    QCOMPARE(control<QLabel>("importPath")->textFormat(), Qt::PlainText);
    QCOMPARE(control<QLabel>("importPath")->text(), QStringLiteral("<b>x<i>.tgz"));
    QVERIFY(!control<QLabel>("importPath")->toolTip().contains(QLatin1String("<b>")));
    QCOMPARE(control<QLabel>("importMessage")->textFormat(), Qt::PlainText);
}

void ImportFormTest::aNameDoesNotReadBackwards()
{
    const QString name = QStringLiteral("ctl") + QChar(0x202e) + QStringLiteral("gnp.tgz");
    m_form->showRefusal(QStringLiteral("/a/") + name, QStringLiteral("no"));
    QCOMPARE(control<QLabel>("importPath")->text(), QStringLiteral("ctl?gnp.tgz"));
}

KODMS_TEST_MAIN(ImportFormTest, QApplication)
#include "ImportFormTest.moc"
