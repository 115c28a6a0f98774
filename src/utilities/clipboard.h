#pragma once

#include <QObject>
#include <QVariantMap>

#include <memory>

// Holds one task, project, folder or context for Cut, Copy and Paste between lists. It never
// touches the system clipboard: text in fields goes through the text controls. After a cut it also
// keeps what a paste needs to bring the object back under its old id, with its descendants' states.
class Clipboard : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantMap object READ object WRITE setObject NOTIFY objectChanged)
    Q_PROPERTY(QVariantMap extraInfo READ extraInfo NOTIFY extraInfoChanged)
    Q_PROPERTY(bool containsTask READ containsTask NOTIFY containsTaskChanged)
    Q_PROPERTY(bool containsProject READ containsProject NOTIFY containsProjectChanged)
    Q_PROPERTY(bool containsContext READ containsContext NOTIFY containsContextChanged)
    Q_PROPERTY(bool containsFolder READ containsFolder NOTIFY containsFolderChanged)

public:
    static Clipboard* instance();
    ~Clipboard() override;

    QVariantMap object() const;
    QVariantMap extraInfo() const;
    bool containsTask() const;
    bool containsProject() const;
    bool containsContext() const;
    bool containsFolder() const;

    // A copy: the stored map has the shape of a new local object. An empty map empties the clipboard.
    Q_INVOKABLE void setObject(const QVariantMap& object);
    // A cut: the copy above, plus the object's id and state and those of everything below it,
    // recorded before the caller deletes it.
    Q_INVOKABLE void setCutObject(const QVariantMap& object);

signals:
    void objectChanged(const QVariantMap& object);
    void extraInfoChanged();
    void containsTaskChanged();
    void containsProjectChanged();
    void containsContextChanged();
    void containsFolderChanged();

private:
    Clipboard();
    void updateFlags(const QVariantMap& object);
    void setExtraInfo(const QVariantMap& info);

    struct Private;
    std::unique_ptr<Private> d;
};
