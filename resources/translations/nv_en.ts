<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>ObjectListDelegate</name>
    <message numerus="yes">
        <location filename="../../qml/Delegates/ObjectListDelegate.qml" line="91"/>
        <source>%n day(s)</source>
        <translation>
            <numerusform>%n day</numerusform>
            <numerusform>%n days</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ObjectListPage</name>
    <message numerus="yes">
        <location filename="../../qml/Pages/ObjectListPage.qml" line="50"/>
        <source>%n task(s)</source>
        <translation>
            <numerusform>%n task</numerusform>
            <numerusform>%n tasks</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <location filename="../../qml/Pages/ObjectListPage.qml" line="51"/>
        <source>%n project(s)</source>
        <translation>
            <numerusform>%n project</numerusform>
            <numerusform>%n projects</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <location filename="../../qml/Pages/ObjectListPage.qml" line="52"/>
        <source>Also available: %n task(s)</source>
        <translation>
            <numerusform>Also available: %n task</numerusform>
            <numerusform>Also available: %n tasks</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <location filename="../../qml/Pages/ObjectListPage.qml" line="53"/>
        <source>Also available: %n project(s)</source>
        <translation>
            <numerusform>Also available: %n project</numerusform>
            <numerusform>Also available: %n projects</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>PopupHelper</name>
    <message numerus="yes">
        <location filename="../../qml/PopupHelper.qml" line="199"/>
        <source>You deleted %n item(s)</source>
        <translation>
            <numerusform>You deleted %n item</numerusform>
            <numerusform>You deleted %n items</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RepetitionFormatHelper</name>
    <message numerus="yes">
        <location filename="../../src/services/repetitionformathelper.cpp" line="74"/>
        <source>Do every %n days</source>
        <translation>
            <numerusform>Do every %n day</numerusform>
            <numerusform>Do every %n days</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <location filename="../../src/services/repetitionformathelper.cpp" line="76"/>
        <source>Do every %n weeks</source>
        <translation>
            <numerusform>Do every %n week</numerusform>
            <numerusform>Do every %n weeks</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <location filename="../../src/services/repetitionformathelper.cpp" line="78"/>
        <source>Do every %n months</source>
        <translation>
            <numerusform>Do every %n month</numerusform>
            <numerusform>Do every %n months</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TaskListDelegate</name>
    <message numerus="yes">
        <location filename="../../qml/Delegates/TaskListDelegate.qml" line="462"/>
        <source>%n day(s)</source>
        <translation>
            <numerusform>%n day</numerusform>
            <numerusform>%n days</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TaskListPage</name>
    <message numerus="yes">
        <location filename="../../qml/Pages/TaskListPage.qml" line="27"/>
        <source>%n task(s)</source>
        <translation>
            <numerusform>%n task</numerusform>
            <numerusform>%n tasks</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TaskRepetitionFragment</name>
    <message numerus="yes">
        <location filename="../../qml/ContentFragments/TaskRepetitionFragment.qml" line="188"/>
        <source>Every %n day(s)</source>
        <translation>
            <numerusform>Every %n day</numerusform>
            <numerusform>Every %n days</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <location filename="../../qml/ContentFragments/TaskRepetitionFragment.qml" line="189"/>
        <source>Every %n week(s)</source>
        <translation>
            <numerusform>Every %n week</numerusform>
            <numerusform>Every %n weeks</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <location filename="../../qml/ContentFragments/TaskRepetitionFragment.qml" line="190"/>
        <source>Every %n month(s)</source>
        <translation>
            <numerusform>Every %n month</numerusform>
            <numerusform>Every %n months</numerusform>
        </translation>
    </message>
</context>
</TS>
