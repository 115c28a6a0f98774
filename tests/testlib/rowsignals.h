#pragma once

#include <QAbstractItemModel>
#include <QSignalSpy>

// Records the structural and data signals of a model, so that a test can say which ones an
// operation emitted and which it did not.
class RowSignals
{
public:
    explicit RowSignals(QAbstractItemModel* model);

    // Every signal that moves, adds or removes rows or reorders them.
    int structuralCount() const;

    QSignalSpy removed;
    QSignalSpy inserted;
    QSignalSpy moved;
    QSignalSpy reset;
    QSignalSpy layoutChanged;
    QSignalSpy dataChanged;
};
