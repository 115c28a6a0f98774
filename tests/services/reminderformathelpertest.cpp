#include "services/reminderformathelper.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

class ReminderFormatHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void typeReadsAsPreviewPhrase_data();
    void typeReadsAsPreviewPhrase();
};

void ReminderFormatHelperTest::typeReadsAsPreviewPhrase_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("isStart");
    QTest::addColumn<QString>("text");

    QTest::newRow("at start") << 0 << true << "When task is active";
    QTest::newRow("at deadline") << 0 << false << "When task is overdue";
    // Each type reads the phrase one place further on than its own lead.
    QTest::newRow("five minutes") << 1 << true << "15 min before start";
    QTest::newRow("one day") << 7 << false << "2 days before deadline";
    QTest::newRow("two days, past the list") << 8 << true << "2 days before start";
    QTest::newRow("unknown type") << 9 << true << "";
}

void ReminderFormatHelperTest::typeReadsAsPreviewPhrase()
{
    QFETCH(int, type);
    QFETCH(bool, isStart);
    QFETCH(QString, text);
    ReminderFormatHelper helper;
    QString phrase;

    QVERIFY(QMetaObject::invokeMethod(&helper, "formatReminderForPreviewSection",
                                      Q_RETURN_ARG(QString, phrase), Q_ARG(int, type), Q_ARG(bool, isStart)));

    QCOMPARE(phrase, text);
}

NORVEL_TEST_MAIN(ReminderFormatHelperTest)
#include "reminderformathelpertest.moc"
