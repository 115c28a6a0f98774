#include "sortinghelper.h"

#include <QCollator>
#include <QDateTime>

using SortingNamespace::SortingType;

namespace {

// Names sort the same way in every interface language, with numbers compared by value so that
// "Task 2" precedes "Task 10". Building a collator is costly, so the interface thread keeps one.
const QCollator& nameCollator()
{
    static const QCollator collator = [] {
        QCollator made{QLocale(QLocale::English, QLocale::UnitedStates)};
        made.setNumericMode(true);
        return made;
    }();
    return collator;
}

int stateOf(const QVariantMap& object)
{
    return object.value(QStringLiteral("STATE")).toInt();
}

// TIMESTAMP arrives as a number from some tables and as text from others.
uint timestampOf(const QVariantMap& object)
{
    return object.value(QStringLiteral("TIMESTAMP")).toUInt();
}

// An undated object carries an empty text or nothing; both read as a null date.
QDateTime dateOf(const QVariantMap& object, const QString& key)
{
    const QDateTime date = object.value(key).toDateTime();
    return date.isValid() ? date : QDateTime();
}

bool compareByDates(const QVariantMap& left, const QVariantMap& right, SortingType sortingType)
{
    const QDateTime leftStart = dateOf(left, QStringLiteral("START"));
    const QDateTime leftDue = dateOf(left, QStringLiteral("DUE"));
    const QDateTime rightStart = dateOf(right, QStringLiteral("START"));
    const QDateTime rightDue = dateOf(right, QStringLiteral("DUE"));

    const bool leftDated = !leftStart.isNull() || !leftDue.isNull();
    const bool rightDated = !rightStart.isNull() || !rightDue.isNull();
    if (leftDated != rightDated)
        return leftDated;
    if (leftDue.isNull() != rightDue.isNull())
        return !leftDue.isNull();
    if (leftStart.isNull() != rightStart.isNull()) {
        if (leftDue == rightDue)
            return SortingHelper::compareBySortingType(left, right, sortingType);
        return leftDue < rightDue;
    }
    if (leftDue != rightDue)
        return leftDue < rightDue;
    if (leftStart != rightStart)
        return leftStart < rightStart;
    return SortingHelper::compareBySortingType(left, right, sortingType);
}

} // namespace

bool SortingHelper::compareObjects(const QVariantMap& left, const QVariantMap& right, SortingType sortingType,
                                   bool groupByDate)
{
    const int leftState = stateOf(left);
    const int rightState = stateOf(right);
    if (leftState != rightState)
        return leftState < rightState;
    if (!groupByDate)
        return compareBySortingType(left, right, sortingType);
    return compareByDates(left, right, sortingType);
}

bool SortingHelper::compareBySortingType(const QVariantMap& left, const QVariantMap& right,
                                         SortingType sortingType)
{
    switch (sortingType) {
    case SortingNamespace::TimestampAscType:
    case SortingNamespace::TimestampDescType: {
        const uint leftTimestamp = timestampOf(left);
        const uint rightTimestamp = timestampOf(right);
        if (leftTimestamp != rightTimestamp) {
            return sortingType == SortingNamespace::TimestampAscType ? leftTimestamp < rightTimestamp
                                                                     : leftTimestamp > rightTimestamp;
        }
        break;
    }
    case SortingNamespace::AlphabeticalType: {
        // Names that differ only in ways the collator ignores fall through to the ID as well.
        const int order = nameCollator().compare(left.value(QStringLiteral("NAME")).toString(),
                                                 right.value(QStringLiteral("NAME")).toString());
        if (order != 0)
            return order < 0;
        break;
    }
    case SortingNamespace::ManualType:
        break;
    }
    return left.value(QStringLiteral("ID")).toString() < right.value(QStringLiteral("ID")).toString();
}

bool SortingHelper::compareDeletedObjects(const QVariantMap& left, const QVariantMap& right)
{
    if (timestampOf(left) != timestampOf(right))
        return compareBySortingType(left, right, SortingNamespace::TimestampDescType);
    const auto leftLevel = left.constFind(QStringLiteral("LEVEL"));
    const auto rightLevel = right.constFind(QStringLiteral("LEVEL"));
    if (leftLevel != left.constEnd() && rightLevel != right.constEnd()) {
        const int leftDepth = leftLevel->toInt();
        const int rightDepth = rightLevel->toInt();
        if (leftDepth != rightDepth)
            return leftDepth < rightDepth;
    }
    return compareBySortingType(left, right, SortingNamespace::AlphabeticalType);
}
