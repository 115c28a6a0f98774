#include "testlib/testenvironment.h"

#include <QApplication>
#include <QJSValue>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QtTest>

#include <memory>

// The page history on its own, loaded from the resources as the pages load it.
class HistoryStackTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void singleEntryCannotGoBack();
    void backAndForwardRedoNavigationButNotPageJumps();
    void onlyTheFirstStringEntryIsRemoved();

private:
    QVariant call(const char* function, const QVariant& argument = QVariant());
    int depth(const char* property) const { return m_stack->property(property).toInt(); }

    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_stack;
};

void HistoryStackTest::init()
{
    QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/HistoryStack.qml")));
    m_stack.reset(component.create());
    QVERIFY2(m_stack, qPrintable(component.errorString()));
}

QVariant HistoryStackTest::call(const char* function, const QVariant& argument)
{
    QVariant result;
    if (argument.isValid())
        QMetaObject::invokeMethod(m_stack.get(), function, Q_RETURN_ARG(QVariant, result),
                                  Q_ARG(QVariant, argument));
    else
        QMetaObject::invokeMethod(m_stack.get(), function, Q_RETURN_ARG(QVariant, result));
    // Strings come back as they are, other values wrapped as script values.
    if (result.userType() != qMetaTypeId<QJSValue>())
        return result;
    const QJSValue value = result.value<QJSValue>();
    return value.isUndefined() ? QVariant() : value.toVariant();
}

void HistoryStackTest::singleEntryCannotGoBack()
{
    call("push", QVariant::fromValue(nullptr));
    QVERIFY(!call("lastBackItem").isValid());
    QCOMPARE(depth("backStackDepth"), 1);
    QCOMPARE(depth("forwardStackDepth"), 0);
}

void HistoryStackTest::backAndForwardRedoNavigationButNotPageJumps()
{
    call("push", QVariantMap{{QStringLiteral("ID"), QStringLiteral("folder")}});
    call("push", QVariantMap{{QStringLiteral("ID"), QStringLiteral("project")}});

    QCOMPARE(call("lastBackItem").toMap().value(QStringLiteral("ID")), QVariant(QStringLiteral("folder")));
    QCOMPARE(depth("forwardStackDepth"), 1);
    QCOMPARE(call("lastForwardItem").toMap().value(QStringLiteral("ID")),
             QVariant(QStringLiteral("project")));
    QCOMPARE(depth("backStackDepth"), 2);
    QCOMPARE(depth("forwardStackDepth"), 0);

    // A jump from another page is left behind for good: it cannot be redone.
    call("push", QStringLiteral("nbpage_task-1"));
    QCOMPARE(call("lastBackItem").toString(), QStringLiteral("nbpage_task-1"));
    QCOMPARE(depth("backStackDepth"), 2);
    QCOMPARE(depth("forwardStackDepth"), 0);

    // A new step forgets what could be redone.
    call("lastBackItem");
    QCOMPARE(depth("forwardStackDepth"), 1);
    call("push", QVariantMap{{QStringLiteral("ID"), QStringLiteral("other")}});
    QCOMPARE(depth("forwardStackDepth"), 0);
}

void HistoryStackTest::onlyTheFirstStringEntryIsRemoved()
{
    call("push", QStringLiteral("prjpage_a"));
    call("push", QVariant::fromValue(nullptr));
    call("push", QStringLiteral("ctxpage_b"));
    call("removeStringObjects");
    QCOMPARE(depth("backStackDepth"), 2);
    QCOMPARE(call("lastBackItem").toString(), QStringLiteral("ctxpage_b"));
}

NORVEL_TEST_MAIN(HistoryStackTest)
#include "historystacktest.moc"
