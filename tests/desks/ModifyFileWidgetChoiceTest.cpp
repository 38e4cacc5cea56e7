// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/modifyfile/DMS_ModifyFile_Widget.h"
#include "tests/desks/DeskTest.h"
#include "tests/desks/FileDialogProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTranslator>

#include <map>

using namespace KODMS::Tests;
using KODMS::UI::DMS_ModifyFile_Widget;

/// The two dialogs in which a file or a folder is chosen, and what is proposed.
class ModifyFileWidgetChoiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase();
    void init();
    void cleanupTestCase();

    void theFileDialog();
    void theFolderDialog();
    void theDialogsTextsAreTranslated();
    void aChosenFileIsShownAndItsNameProposed_data();
    void aChosenFileIsShownAndItsNameProposed();
    void theFirstOfSeveralFilesCounts();
    void aChosenFolderIsShownAndItsNameProposed_data();
    void aChosenFolderIsShownAndItsNameProposed();
    void aDismissedDialogChangesNothing_data();
    void aDismissedDialogChangesNothing();
    void anotherChoiceReplacesBothFields();
    void aChoiceOutlivesClosingAndAnotherRow();
    void choosingAsksNobody();
    void aWindowThatGoesMeanwhileIsNotTouched_data();
    void aWindowThatGoesMeanwhileIsNotTouched();

private:
    QString made(const QString &name) const;
    QString madeFolder(const QString &name) const;

    QTemporaryDir m_dir;
    QString m_start;
    std::unique_ptr<DMS_ModifyFile_Widget> m_window;
};

namespace {

/// Translates what the window says in its own context, and nothing else.
class Dictionary : public QTranslator {
public:
    explicit Dictionary(std::map<QByteArray, QString> words) : m_words(std::move(words))
    {
        QCoreApplication::installTranslator(this);
    }

    ~Dictionary() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *text, const char *, int) const override
    {
        const auto word = m_words.find(text);
        const bool isMeant = qstrcmp(context, "KODMS::UI::DMS_ModifyFile_Widget") == 0;
        return isMeant && word != m_words.end() ? word->second : QString();
    }

private:
    std::map<QByteArray, QString> m_words;
};

QString fieldText(const DMS_ModifyFile_Widget &window, const char *name)
{
    return control<QLineEdit>(window, name)->text();
}

void click(const DMS_ModifyFile_Widget &window, const char *name)
{
    QTest::mouseClick(control<QPushButton>(window, name), Qt::LeftButton);
}

} // namespace

/// Relative start folders lead into a folder of this test's own.
void ModifyFileWidgetChoiceTest::initTestCase()
{
    QVERIFY(m_dir.isValid());
    m_start = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_dir.path()));
}

void ModifyFileWidgetChoiceTest::cleanupTestCase()
{
    m_window.reset();
    QVERIFY(QDir::setCurrent(m_start));
}

void ModifyFileWidgetChoiceTest::init()
{
    FakeServices::instance().reset();
    m_window = std::make_unique<DMS_ModifyFile_Widget>(nullptr);
    m_window->show();
}

QString ModifyFileWidgetChoiceTest::made(const QString &name) const
{
    const QString path = QDir(m_dir.path()).canonicalPath() + QLatin1Char('/') + name;
    QFile file(path);
    return file.open(QIODevice::WriteOnly) ? path : QString();
}

QString ModifyFileWidgetChoiceTest::madeFolder(const QString &name) const
{
    const QDir dir(QDir(m_dir.path()).canonicalPath());
    return dir.mkpath(name) ? dir.filePath(name) : QString();
}

void ModifyFileWidgetChoiceTest::theFileDialog()
{
    FileDialogProbe probe;
    click(*m_window, "m_pOpenFilePB");
    QCOMPARE(probe.count(), 1);
    const SeenFileDialog &seen = probe.seen();
    QCOMPARE(seen.title, QStringLiteral("Import"));
    QCOMPARE(seen.folder, QDir(QStringLiteral("./")).absolutePath());
    QCOMPARE(seen.filters, QStringList(QStringLiteral("ODB++(*.tgz *.tar *.zip *.rar *.kos)")));
    QCOMPARE(seen.fileMode, QFileDialog::ExistingFiles);
    QCOMPARE(seen.viewMode, QFileDialog::Detail);
    QCOMPARE(seen.parent.data(), static_cast<QWidget *>(m_window.get()));
    QVERIFY(seen.isModal);
    QVERIFY(m_window->findChildren<QFileDialog *>().isEmpty());
}

void ModifyFileWidgetChoiceTest::theFolderDialog()
{
    FileDialogProbe probe;
    click(*m_window, "m_pOpenDirPB");
    QCOMPARE(probe.count(), 1);
    const SeenFileDialog &seen = probe.seen();
    QCOMPARE(seen.title, QStringLiteral("Open Dir"));
    QVERIFY(seen.options & QFileDialog::ShowDirsOnly);
    QCOMPARE(seen.parent.data(), nullptr);
}

/// The folder in which the search for a folder begins is such a text, too: only a
/// translation leads it to a place that exists here.
void ModifyFileWidgetChoiceTest::theDialogsTextsAreTranslated()
{
    const QString start = madeFolder(QStringLiteral("start"));
    const Dictionary dictionary({{"Import", QStringLiteral("Importieren")},
                                 {"ODB++", QStringLiteral("Archive")},
                                 {"Open Dir", QStringLiteral("Ordner")},
                                 {"c:/", start}});
    FileDialogProbe probe;
    click(*m_window, "m_pOpenFilePB");
    QCOMPARE(probe.seen().title, QStringLiteral("Importieren"));
    QCOMPARE(probe.seen().filters.first(),
             QStringLiteral("Archive(*.tgz *.tar *.zip *.rar *.kos)"));
    click(*m_window, "m_pOpenDirPB");
    QCOMPARE(probe.seen().title, QStringLiteral("Ordner"));
    QCOMPARE(probe.seen().folder, start);
}

void ModifyFileWidgetChoiceTest::aChosenFileIsShownAndItsNameProposed_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("proposed");
    const auto row = [](const char *title, const char *file, const char *proposed) {
        QTest::newRow(title) << QString::fromUtf8(file) << QString::fromUtf8(proposed);
    };
    row("an archive", "board.zip", "board");
    row("two dots: the last one ends the name", "abc.rev.tgz", "abc.rev");
    row("no dot: the whole name", "README", "README");
    row("no dot in the name, one in the folder", "rev.2/README", "README");
    row("a dot in the folder too", "rev.2/board.kos", "board");
    row("nothing before the dot", ".rar", "");
#if !defined(Q_OS_WIN) // where such a name is the one without its end
    row("nothing after the dot", "board.", "board");
#endif
    row("Chinese", "电路板.V2.rar", "电路板.V2");
    row("a tar, which nobody stores later", "board.tar", "board");
    row("capitals", "KARTE.ZIP", "KARTE"); // a name of its own, where case is all one
}

void ModifyFileWidgetChoiceTest::aChosenFileIsShownAndItsNameProposed()
{
    QFETCH(QString, file);
    QFETCH(QString, proposed);
    madeFolder(QStringLiteral("rev.2"));
    const QString path = made(file);
    FileDialogProbe probe;
    probe.choose(path);
    click(*m_window, "m_pOpenFilePB");
    QCOMPARE(fieldText(*m_window, "m_pPathLE"), path);
    QCOMPARE(fieldText(*m_window, "m_pNameLE"), proposed);
}

void ModifyFileWidgetChoiceTest::theFirstOfSeveralFilesCounts()
{
    const QString first = made(QStringLiteral("a.zip"));
    FileDialogProbe probe;
    probe.choose({first, made(QStringLiteral("b.zip"))});
    probe.whileOpen([first, this] {
        auto *dialog = m_window->findChild<QFileDialog *>();
        control<QLineEdit>(*dialog, "fileNameEdit")->setText(QStringLiteral("\"a.zip\" \"b.zip\""));
        QCOMPARE(dialog->selectedFiles().size(), 2);
        static_cast<QDialog *>(dialog)->accept();
    });
    click(*m_window, "m_pOpenFilePB");
    QCOMPARE(fieldText(*m_window, "m_pPathLE"), first);
    QCOMPARE(fieldText(*m_window, "m_pNameLE"), QStringLiteral("a"));
}

void ModifyFileWidgetChoiceTest::aChosenFolderIsShownAndItsNameProposed_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("proposed");
    QTest::newRow("a folder") << QStringLiteral("out/job12") << QStringLiteral("job12");
    QTest::newRow("a folder keeps its dots")
        << QStringLiteral("out/job.v2") << QStringLiteral("job.v2");
    QTest::newRow("Chinese") << QStringLiteral("电路板") << QStringLiteral("电路板");
}

void ModifyFileWidgetChoiceTest::aChosenFolderIsShownAndItsNameProposed()
{
    QFETCH(QString, folder);
    QFETCH(QString, proposed);
    const QString path = madeFolder(folder);
    FileDialogProbe probe;
    probe.choose(path);
    click(*m_window, "m_pOpenDirPB");
    QCOMPARE(fieldText(*m_window, "m_pPathLE"), path);
    QCOMPARE(fieldText(*m_window, "m_pNameLE"), proposed);
}

void ModifyFileWidgetChoiceTest::aDismissedDialogChangesNothing_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("file") << QByteArray("m_pOpenFilePB");
    QTest::newRow("folder") << QByteArray("m_pOpenDirPB");
}

void ModifyFileWidgetChoiceTest::aDismissedDialogChangesNothing()
{
    QFETCH(QByteArray, button);
    const QString path = made(QStringLiteral("board.zip"));
    FileDialogProbe probe;
    probe.choose(path);
    click(*m_window, "m_pOpenFilePB");
    control<QLineEdit>(*m_window, "m_pNameLE")->setText(QStringLiteral("typed"));
    probe.choose(QStringList());
    click(*m_window, button.constData());
    QCOMPARE(probe.count(), 2);
    QCOMPARE(fieldText(*m_window, "m_pPathLE"), path);
    QCOMPARE(fieldText(*m_window, "m_pNameLE"), QStringLiteral("typed"));
}

void ModifyFileWidgetChoiceTest::anotherChoiceReplacesBothFields()
{
    FileDialogProbe probe;
    probe.choose(made(QStringLiteral("board.zip")));
    click(*m_window, "m_pOpenFilePB");
    const QString folder = madeFolder(QStringLiteral("job12"));
    probe.choose(folder);
    click(*m_window, "m_pOpenDirPB");
    QCOMPARE(fieldText(*m_window, "m_pPathLE"), folder);
    QCOMPARE(fieldText(*m_window, "m_pNameLE"), QStringLiteral("job12"));
}

void ModifyFileWidgetChoiceTest::aChoiceOutlivesClosingAndAnotherRow()
{
    const QString path = made(QStringLiteral("board.zip"));
    FileDialogProbe probe;
    probe.choose(path);
    click(*m_window, "m_pOpenFilePB");
    m_window->close();
    m_window->show();
    m_window->setData(QStringLiteral("other"), QString(), QString(), QStringLiteral("8"), QString(),
                      QStringLiteral("guid8"), QString());
    QCOMPARE(fieldText(*m_window, "m_pPathLE"), path);
    QCOMPARE(fieldText(*m_window, "m_pNameLE"), QStringLiteral("board"));
}

void ModifyFileWidgetChoiceTest::choosingAsksNobody()
{
    FileDialogProbe probe;
    probe.choose(made(QStringLiteral("board.zip")));
    click(*m_window, "m_pOpenFilePB");
    probe.choose(madeFolder(QStringLiteral("job12")));
    click(*m_window, "m_pOpenDirPB");
    QVERIFY(FakeServices::instance().calls().isEmpty());
}

void ModifyFileWidgetChoiceTest::aWindowThatGoesMeanwhileIsNotTouched_data()
{
    aDismissedDialogChangesNothing_data();
}

void ModifyFileWidgetChoiceTest::aWindowThatGoesMeanwhileIsNotTouched()
{
    QFETCH(QByteArray, button);
    const QString chosen = button == "m_pOpenFilePB" ? made(QStringLiteral("board.zip"))
                                                     : madeFolder(QStringLiteral("job12"));
    FileDialogProbe probe;
    probe.whileOpen([this, chosen] {
        m_window.reset();
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return; // went with the window
        dialog->selectFile(chosen);
        static_cast<QDialog *>(dialog)->accept();
    });
    control<QPushButton>(*m_window, button.constData())->click();
    QCOMPARE(probe.count(), 1);
    QVERIFY(!m_window);
}

KODMS_TEST_MAIN(ModifyFileWidgetChoiceTest, QApplication)
#include "ModifyFileWidgetChoiceTest.moc"
