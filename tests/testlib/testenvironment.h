#pragma once

#include <QTemporaryDir>

// Pins everything that makes runs differ (time zone, locale, hash seed) and points every standard
// location into a temporary home, so that no test reads or writes the real user's files.
// Construct it before the application object.
class TestEnvironment
{
public:
    static constexpr const char* timeZone = "Europe/Berlin";

    TestEnvironment();
    ~TestEnvironment();
    TestEnvironment(const TestEnvironment&) = delete;
    TestEnvironment& operator=(const TestEnvironment&) = delete;

    // Call once the application object exists.
    void applyToApplication();

    QString homePath() const;

private:
    QTemporaryDir m_home;
};

#define NORVEL_TEST_MAIN(TestObject)                                                                         \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        TestEnvironment environment;                                                                         \
        QApplication app(argc, argv);                                                                        \
        environment.applyToApplication();                                                                    \
        TestObject testObject;                                                                               \
        return QTest::qExec(&testObject, argc, argv);                                                        \
    }
