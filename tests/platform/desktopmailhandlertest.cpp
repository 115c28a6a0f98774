#include "platform/desktopmailhandler.h"
#include "testlib/testenvironment.h"
#include "utilities/helper.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

// xdg-mime reads the desktop's choice from mimeapps.list files under the XDG directories, and asks
// the desktop's own tools when it recognises a desktop session. Each case runs in directories of its
// own with no desktop session in sight, so that the machine's settings never leak in.
class DesktopMailHandlerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void defaultHandlerComesFromMimeappsList_data();
    void defaultHandlerComesFromMimeappsList();
    void missingQueryToolMeansNoHandler();

private:
    void installDesktopFile(const QString& fileName);
    void writeMimeappsList(const QString& handler);

    std::unique_ptr<QTemporaryDir> m_xdg;
    QByteArray m_path;
};

void DesktopMailHandlerTest::initTestCase()
{
    QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("xdg-mime")).isEmpty(),
             "xdg-mime is missing: install xdg-utils (scripts/install-deps.sh)");
    for (const char* sessionVariable :
         {"XDG_CURRENT_DESKTOP", "XDG_MENU_PREFIX", "DESKTOP_SESSION", "KDE_FULL_SESSION",
          "KDE_SESSION_VERSION", "GNOME_DESKTOP_SESSION_ID", "MATE_DESKTOP_SESSION_ID", "LXQT_SESSION_CONFIG",
          "DESKTOP", "DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "WAYLAND_DISPLAY"})
        qunsetenv(sessionVariable);
    m_path = qgetenv("PATH");
}

void DesktopMailHandlerTest::init()
{
    m_xdg = std::make_unique<QTemporaryDir>();
    QVERIFY(m_xdg->isValid());
    const QDir root(m_xdg->path());
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_DATA_HOME", "XDG_DATA_DIRS"}) {
        const QString directory = root.filePath(QString::fromLatin1(variable).toLower());
        QVERIFY(root.mkpath(directory + QStringLiteral("/applications")));
        qputenv(variable, directory.toUtf8());
    }
}

void DesktopMailHandlerTest::cleanup()
{
    qputenv("PATH", m_path);
    m_xdg.reset();
}

void DesktopMailHandlerTest::installDesktopFile(const QString& fileName)
{
    QFile file(qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/applications/") + fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[Desktop Entry]\nType=Application\nName=Mail\nExec=true %u\n");
}

void DesktopMailHandlerTest::writeMimeappsList(const QString& handler)
{
    QFile file(qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/mimeapps.list"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[Default Applications]\ntext/plain=editor.desktop\nx-scheme-handler/mailto=" +
               handler.toUtf8() + "\n");
}

void DesktopMailHandlerTest::defaultHandlerComesFromMimeappsList_data()
{
    QTest::addColumn<QString>("named");
    QTest::addColumn<QString>("handler");

    QTest::newRow("named") << QStringLiteral("letters.desktop") << QStringLiteral("letters.desktop");
    QTest::newRow("nothing named") << QString() << QString();
}

void DesktopMailHandlerTest::defaultHandlerComesFromMimeappsList()
{
    QFETCH(QString, named);
    QFETCH(QString, handler);
    installDesktopFile(QStringLiteral("letters.desktop"));
    if (!named.isEmpty())
        writeMimeappsList(named);

    QCOMPARE(DesktopMailHandler::defaultHandler(), handler);
    QCOMPARE(Helper::instance()->hasDefaultMailClient(), !handler.isEmpty());
}

void DesktopMailHandlerTest::missingQueryToolMeansNoHandler()
{
    installDesktopFile(QStringLiteral("letters.desktop"));
    writeMimeappsList(QStringLiteral("letters.desktop"));
    qputenv("PATH", m_xdg->path().toUtf8());

    QCOMPARE(DesktopMailHandler::defaultHandler(), QString());
    QVERIFY(!Helper::instance()->hasDefaultMailClient());
}

NORVEL_TEST_MAIN(DesktopMailHandlerTest)
#include "desktopmailhandlertest.moc"
