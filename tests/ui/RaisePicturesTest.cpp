// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/StoreCheck.h"
#include "services/ui/questions/PictureFile.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"
#include "tests/support/UnixTricks.h"
#include "tests/ui/QuestionWindowCase.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QImageWriter>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QSignalSpy>
#include <QTimer>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::UI::DMS_JobCheck_Widget;
using KODMS::UI::DMS_UICommon;

/// The pictures of a question that is being raised: pasted, dropped, chosen, refused, stored.
class RaisePicturesTest : public QuestionWindowCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void picturesAreDropped();
    void picturesArePasted_data();
    void picturesArePasted();
    void aPictureCopiedFromAPageIsPasted();
    void textIsPastedAsText();
    void textWithItsPictureIsPastedAsText();
    void picturesAreChosen();
    void aPictureIsTakenOut();
    void aPictureIsSeenInFull();
    void whatIsNoPictureIsRefused_data();
    void whatIsNoPictureIsRefused();
    void aTooLargePictureIsRefused();
    void aHostileNameIsOnlyShown();
    void aLongNameKeepsItsEnd();
    void theContentTellsTheSuffix();
    void aPhotoStandsUpright();
    void oneBadPictureDoesNotStopTheOthers();
    void twelveAreEnough();
    void aStoreThatFailsLeavesNothing_data();
    void aStoreThatFailsLeavesNothing();
    void recordsThatFailTakeThePicturesBack();
    void theCheckKnowsThePictures();

private:
    QString m_empty; ///< the stock before
};

void RaisePicturesTest::init()
{
    m_home = std::make_unique<QuestionHome>();
    m_empty = m_home->stock();
    m_window = new DMS_JobCheck_Widget(m_home->job.flowId, false, nullptr);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void RaisePicturesTest::cleanup()
{
    delete m_window;
    m_home.reset();
    QApplication::clipboard()->clear();
}

void RaisePicturesTest::picturesAreDropped()
{
    drop({m_home->file(QStringLiteral("one.png")), m_home->file(QStringLiteral("two.jpg"))});
    QCOMPARE(pictures(), 2);
    QCOMPARE(message(), QString());
    write(QStringLiteral("t"));
    click("questionSubmit");
    const QStringList names{QStringLiteral("one.png"), QStringLiteral("two.jpg")};
    QCOMPARE(
        m_home->house.column(QStringLiteral("SELECT file_name FROM question_pictures ORDER BY id")),
        names);
    QCOMPARE(pictures(), 0);
    const QString stored = value("SELECT MIN(stored_name) FROM question_pictures WHERE "
                                 "file_name = 'one.png'");
    QVERIFY(stored.endsWith(QStringLiteral(".png")));
    NoProgress progress;
    const QString copy = m_home->house.path(QStringLiteral("copy"));
    QVERIFY(m_home->house.store().get(stored, copy, progress));
    QFile original(m_home->house.path(QStringLiteral("one.png")));
    QFile kept(copy);
    QVERIFY(original.open(QIODevice::ReadOnly) && kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), original.readAll()); // the picture itself, not made anew
    QVERIFY(TestInstallation::entries(m_home->house.staging()).isEmpty());
}

void RaisePicturesTest::picturesArePasted_data()
{
    QTest::addColumn<QString>("field");
    QTest::newRow("into the title") << "questionTitleEdit";
    QTest::newRow("into the description") << "questionDescriptionEdit";
    QTest::newRow("among the pictures") << "questionPictures";
    QTest::newRow("by the button") << QString();
}

void RaisePicturesTest::picturesArePasted()
{
    QFETCH(QString, field);
    QApplication::clipboard()->setImage(QuestionHome::picture());
    if (field.isEmpty())
        click("questionPastePicture");
    else
        QTest::keySequence(m_window->findChild<QWidget *>(field), QKeySequence::Paste);
    QCOMPARE(pictures(), 1);
    write(QStringLiteral("t"));
    click("questionSubmit");
    QCOMPARE(value("SELECT file_name FROM question_pictures"), QStringLiteral("粘贴的图片 1.png"));
}

/// A browser puts the address beside the picture.
void RaisePicturesTest::aPictureCopiedFromAPageIsPasted()
{
    auto *data = new QMimeData;
    data->setUrls({QUrl(QStringLiteral("https://example.invalid/x.png"))});
    data->setImageData(QuestionHome::picture());
    QApplication::clipboard()->setMimeData(data);
    click("questionPastePicture");
    QCOMPARE(pictures(), 1);
    QCOMPARE(message(), QString());
}

void RaisePicturesTest::textIsPastedAsText()
{
    QApplication::clipboard()->setText(QStringLiteral("drill"));
    QTest::keySequence(part<QLineEdit>("questionTitleEdit"), QKeySequence::Paste);
    QCOMPARE(part<QLineEdit>("questionTitleEdit")->text(), QStringLiteral("drill"));
    QCOMPARE(pictures(), 0);
    click("questionPastePicture");
    QCOMPARE(message(), QStringLiteral("剪贴板中没有图片"));
}

/// A spreadsheet copies its cells both ways; the button means the picture.
void RaisePicturesTest::textWithItsPictureIsPastedAsText()
{
    auto *data = new QMimeData;
    data->setText(QStringLiteral("0.25"));
    data->setImageData(QuestionHome::picture());
    QApplication::clipboard()->setMimeData(data);
    QTest::keySequence(part<QLineEdit>("questionTitleEdit"), QKeySequence::Paste);
    QCOMPARE(part<QLineEdit>("questionTitleEdit")->text(), QStringLiteral("0.25"));
    QCOMPARE(pictures(), 0);
    click("questionPastePicture");
    QCOMPARE(pictures(), 1);
}

void RaisePicturesTest::picturesAreChosen()
{
    const QString path = m_home->file(QStringLiteral("one.png"));
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QTimer::singleShot(0, qApp, [path] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        dialog->selectFile(path);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    click("questionAddPicture");
    QCOMPARE(pictures(), 1);
}

void RaisePicturesTest::aPictureIsTakenOut()
{
    drop({m_home->file(QStringLiteral("one.png")), m_home->file(QStringLiteral("two.png")),
          m_home->file(QStringLiteral("three.png"))});
    auto *strip = part<QListWidget>("questionPictures");
    strip->setCurrentRow(1);
    QTest::keyClick(strip, Qt::Key_Delete);
    QCOMPARE(pictures(), 2);
    QCOMPARE(strip->item(1)->text(), QStringLiteral("three.png"));
    click("questionRemovePicture");
    click("questionRemovePicture");
    QCOMPARE(pictures(), 0);
    QVERIFY(!part<QPushButton>("questionRemovePicture")->isEnabled());
    write(QStringLiteral("t"));
    click("questionSubmit");
    QCOMPARE(value("SELECT count(*) FROM question_pictures"), QStringLiteral("0"));
}

void RaisePicturesTest::aPictureIsSeenInFull()
{
    QImage wide = QuestionHome::picture(500, 300);
    QVERIFY(wide.save(m_home->house.path(QStringLiteral("wide.png"))));
    drop({m_home->house.path(QStringLiteral("wide.png"))});
    auto *strip = part<QListWidget>("questionPictures");
    strip->setCurrentRow(0);
    QTest::keyClick(strip, Qt::Key_Return);
    QPointer<QWidget> shown = m_window->findChild<QWidget *>(QStringLiteral("questionPicture"));
    QVERIFY(shown && shown->isVisible());
    QCOMPARE(shown->findChild<QLabel *>()->pixmap(Qt::ReturnByValue).size(), QSize(500, 300));
    QTRY_COMPARE(QApplication::activeWindow(), shown.data());
    QTest::keyClick(shown, Qt::Key_Escape);
    QTRY_VERIFY(!shown);
    QVERIFY(m_window->isVisible());
}

void RaisePicturesTest::whatIsNoPictureIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("why");
    const QString none = QStringLiteral("不是可识别的图片（PNG、JPEG、BMP、GIF）");
    QTest::newRow("a text by the name of a picture") << "a.png" << QByteArray("hello") << none;
    QTest::newRow("nothing") << "empty.png" << QByteArray() << none;
    QTest::newRow("a drawing that could name other files")
        << "a.svg" << QByteArray("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\"/>") << none;
    QTest::newRow("only the beginning of one")
        << "cut.png" << QByteArray::fromHex("89504e470d0a1a0a0000000d49484452") << "图片已损坏";
}

void RaisePicturesTest::whatIsNoPictureIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, why);
    drop({m_home->file(name, bytes)});
    QCOMPARE(pictures(), 0);
    QCOMPARE(message(), name + QStringLiteral("：") + why);
    QCOMPARE(m_home->stock(), m_empty);
}

void RaisePicturesTest::aTooLargePictureIsRefused()
{
    QFile file(m_home->house.path(QStringLiteral("big.png")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(PictureFile::MostBytes + 1));
    drop({file.fileName()});
    QVERIFY2(message().startsWith(QStringLiteral("图片过大：big.png")), qPrintable(message()));
    // A few bytes that would become gigabytes.
    QByteArray bomb;
    QBuffer buffer(&bomb);
    QVERIFY(QImage(50000, 801, QImage::Format_Mono).save(&buffer, "PNG"));
    drop({m_home->file(QStringLiteral("bomb.png"), bomb)});
    QCOMPARE(message(), QStringLiteral("bomb.png：图片过大：50000 × 801 像素"));
    QCOMPARE(pictures(), 0);
}

void RaisePicturesTest::aHostileNameIsOnlyShown()
{
#if defined(Q_OS_WIN)
    QSKIP("no file can have such a name here");
#endif
    const QString name = QStringLiteral("<b>a\n\u202Egnp;..%2fb.png");
    drop({m_home->file(name)});
    const QString shown = QStringLiteral("<b>a??gnp;..%2fb.png");
    QCOMPARE(part<QListWidget>("questionPictures")->item(0)->text(), shown);
    QVERIFY(part<QListWidget>("questionPictures")
                ->item(0)
                ->toolTip()
                .contains(QStringLiteral("&lt;b&gt;")));
    write(QStringLiteral("t"));
    click("questionSubmit");
    QCOMPARE(value("SELECT file_name FROM question_pictures"), shown);
    QVERIFY(FileStore::isValidStoredName(value("SELECT stored_name FROM question_pictures")));
}

void RaisePicturesTest::aLongNameKeepsItsEnd()
{
    const QString name = QString(230, QLatin1Char('x')) + QStringLiteral("y.png");
    drop({m_home->file(name)});
    QCOMPARE(part<QListWidget>("questionPictures")->item(0)->text(), name.right(200));
}

void RaisePicturesTest::theContentTellsTheSuffix()
{
    QByteArray photo;
    QBuffer buffer(&photo);
    QVERIFY(QuestionHome::picture().save(&buffer, "JPEG"));
    drop({m_home->file(QStringLiteral("photo.png"), photo)});
    write(QStringLiteral("t"));
    click("questionSubmit");
    QCOMPARE(value("SELECT file_name FROM question_pictures"), QStringLiteral("photo.png"));
    QVERIFY(value("SELECT stored_name FROM question_pictures").endsWith(QStringLiteral(".jpeg")));
}

/// Cameras write how they were held; and a thumbnail is no larger than its place.
void RaisePicturesTest::aPhotoStandsUpright()
{
    QByteArray photo;
    QBuffer buffer(&photo);
    QImageWriter writer(&buffer, "JPEG");
    writer.setTransformation(QImageIOHandler::TransformationRotate90);
    QVERIFY(writer.write(QuestionHome::picture(500, 300)));
    const auto whole = PictureFile::decode(photo, QSize());
    QVERIFY(whole);
    QCOMPARE(whole.value.size(), QSize(300, 500));
    const auto picture = PictureFile::fromFile(m_home->file(QStringLiteral("photo.jpg"), photo));
    QVERIFY(picture);
    const QSize thumbnail = picture.value.thumbnail.size();
    QCOMPARE(thumbnail.boundedTo(PictureFile::ThumbnailSize), thumbnail);
    QVERIFY(thumbnail.height() > thumbnail.width());
}

void RaisePicturesTest::oneBadPictureDoesNotStopTheOthers()
{
    const QString pipe = m_home->house.path(QStringLiteral("pipe.png"));
    if (!makePipe(pipe))
        QSKIP("a folder cannot hold a pipe here");
    drop({QUrl::fromLocalFile(m_home->house.path(QStringLiteral("nothing.png"))),
          QUrl::fromLocalFile(m_home->file(QStringLiteral("one.png"))), QUrl::fromLocalFile(pipe),
          QUrl::fromLocalFile(m_home->house.path(QString())),
          QUrl(QStringLiteral("https://example.invalid/x.png")),
          QUrl::fromLocalFile(m_home->file(QStringLiteral("two.gif"), "GIF89a"))});
    QCOMPARE(pictures(), 1);
    const QStringList lines = message().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.at(0), QStringLiteral("只能使用本机上的图片"));
    QCOMPARE(lines.at(1), QStringLiteral("nothing.png：不是文件"));
    QCOMPARE(lines.at(2), QStringLiteral("pipe.png：不是文件"));
}

void RaisePicturesTest::twelveAreEnough()
{
    const QString path = m_home->file(QStringLiteral("one.png"));
    QStringList many;
    for (int i = 0; i < 11; ++i)
        many << path;
    drop(many);
    drop(QStringList{path, path, path});
    QCOMPARE(pictures(), 12);
    QCOMPARE(message(), QStringLiteral("图片过多，最多 12 张"));
}

void RaisePicturesTest::aStoreThatFailsLeavesNothing_data()
{
    QTest::addColumn<QString>("trouble");
    QTest::newRow("staging cannot be written") << "staging";
    QTest::newRow("the store cannot be written") << "store";
}

void RaisePicturesTest::aStoreThatFailsLeavesNothing()
{
    QFETCH(QString, trouble);
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    drop({m_home->file(QStringLiteral("one.png")), m_home->file(QStringLiteral("two.png"))});
    write(QStringLiteral("t"), QStringLiteral("d"));
    const bool isStaging = trouble == QLatin1String("staging");
    const QString root = isStaging ? QDir(m_home->house.staging()).absolutePath()
                                   : m_home->house.runtime().configuration().fileStore.root;
    // A file stands where the folder was, which stops even a privileged user.
    QVERIFY(QDir().rename(root, root + QStringLiteral(".away")));
    QFile obstacle(root);
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    expect("question\\.raise");
    click("questionSubmit");
    QVERIFY(!message().isEmpty());
    QCOMPARE(notices.size(), 1);
    QVERIFY(obstacle.remove());
    QVERIFY(QDir().rename(root + QStringLiteral(".away"), root));
    QCOMPARE(m_home->stock(), m_empty);
    QCOMPARE(pictures(), 2);
    QCOMPARE(part<QLineEdit>("questionTitleEdit")->text(), QStringLiteral("t"));
    click("questionSubmit"); // nothing was lost
    QCOMPARE(value("SELECT count(*) FROM question_pictures"), QStringLiteral("2"));
}

void RaisePicturesTest::recordsThatFailTakeThePicturesBack()
{
    const PlainConnection others(m_home->house.place().settings());
    const QString change = QStringLiteral("INSERT ON question_pictures");
    others.refuse(change, QStringLiteral("disk"), QStringLiteral("NEW.file_name = 'two.png'"));
    drop({m_home->file(QStringLiteral("one.png")), m_home->file(QStringLiteral("two.png"))});
    write(QStringLiteral("t"), QStringLiteral("d"));
    expect("question\\.raise");
    click("questionSubmit");
    QVERIFY(!message().isEmpty());
    QCOMPARE(m_home->stock(), m_empty);
    QCOMPARE(pictures(), 2);
    others.allow(change);
    click("questionSubmit");
    QCOMPARE(value("SELECT count(*) FROM question_pictures"), QStringLiteral("2"));
}

void RaisePicturesTest::theCheckKnowsThePictures()
{
    drop({m_home->file(QStringLiteral("one.png")), m_home->file(QStringLiteral("two.png"))});
    write(QStringLiteral("t"));
    click("questionSubmit");
    CheckOptions options;
    options.repair = true;
    m_home->house.actAsAdmin();
    const auto clean = StoreCheck::check(options);
    QVERIFY(clean.value.isClean());
    QVERIFY(clean.value.findings.isEmpty());
    QCOMPARE(clean.value.records, qint64{4}); // two jobs' files and two pictures
    const QString stored =
        value("SELECT stored_name FROM question_pictures WHERE file_name = 'two.png'");
    QVERIFY(m_home->house.store().remove(stored));
    const auto found = StoreCheck::check(options);
    QVERIFY(!found.value.isClean());
    QCOMPARE(found.value.findings.size(), 1);
    QCOMPARE(found.value.findings.first().name, stored);
}

KODMS_TEST_MAIN(RaisePicturesTest, QApplication)
#include "RaisePicturesTest.moc"
