#include "searchhelper.h"

#include "core/settings.h"
#include "models/listmodel.h"
#include "models/searchsortfiltermodel.h"
#include "store/datamanager.h"

#include <QColor>
#include <QPointer>
#include <QRegularExpression>
#include <QVector>

namespace {

using Range = QPair<int, int>;

// Tags and character entities: a hit inside one would break the rich text.
QVector<Range> markupRanges(const QString& text)
{
    static const QRegularExpression markup(QStringLiteral("<[^>]*(>|$)|&#?[0-9A-Za-z]+;"));
    QVector<Range> ranges;
    QRegularExpressionMatchIterator match = markup.globalMatch(text);
    while (match.hasNext()) {
        const QRegularExpressionMatch next = match.next();
        ranges.append({next.capturedStart(), next.capturedEnd()});
    }
    return ranges;
}

bool overlapsAny(int start, int end, const QVector<Range>& ranges)
{
    return std::any_of(ranges.cbegin(), ranges.cend(), [start, end](const Range& range) {
        return start < range.second && range.first < end;
    });
}

// The dark grey theme colour is too close to the text to mark anything.
QString highlightColorName()
{
    const QColor color = Settings::instance()->applicationColor();
    if (color == QColor(QStringLiteral("#424242")))
        return QColor(QStringLiteral("#3F51B5")).name();
    return color.name();
}

} // namespace

struct SearchHelper::Private
{
    QPointer<SearchSortFilterModel> model;
    QString searchString;
};

SearchHelper::SearchHelper(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{}

SearchHelper::~SearchHelper() = default;

QVariant SearchHelper::model()
{
    if (!d->model) {
        d->model = new SearchSortFilterModel(false);
        d->model->setSourceModel(new ListModel([] { return DataManager::instance()->getAllObjects(); }));
        d->model->setSearchString(d->searchString);
    }
    const Settings* settings = Settings::instance();
    d->model->setExcludeCompletedTasks(!settings->isShowCompletedTasks());
    d->model->setExcludeCompletedProjects(!settings->isShowCompletedProjects());
    return QVariant::fromValue(d->model.data());
}

QString SearchHelper::searchString() const
{
    return d->searchString;
}

// Working backwards keeps the positions of the markup found in the original text valid.
QString SearchHelper::highlightSearchString(const QString& searchString, const QString& text) const
{
    if (searchString.isEmpty())
        return text;
    const QVector<Range> protectedRanges = markupRanges(text);
    const QString highlightTemplate = QStringLiteral("<font color=\"%1\"><b>%2</b></font>");
    const QString colorName = highlightColorName();
    QString result = text;
    int from = -1;
    while (true) {
        const int hit = result.lastIndexOf(searchString, from, Qt::CaseInsensitive);
        if (hit == -1)
            break;
        const int hitEnd = hit + searchString.size();
        if (!overlapsAny(hit, hitEnd, protectedRanges))
            result.replace(hit, searchString.size(),
                           highlightTemplate.arg(colorName, result.mid(hit, searchString.size())));
        if (hit == 0)
            break;
        from = hit - 1;
    }
    return result;
}

void SearchHelper::setSearchString(const QString& searchString)
{
    if (d->searchString == searchString)
        return;
    d->searchString = searchString;
    if (d->model)
        d->model->setSearchString(searchString);
    emit searchStringChanged(searchString);
}

void SearchHelper::abort()
{
    emit searchAborted();
}
