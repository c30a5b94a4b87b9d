#include "terminal/ui/SecurityBox.h"

#include "terminal/data/PinyinInitials.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>

namespace Terminal {

namespace {

constexpr int codeRole = Qt::UserRole;
constexpr int searchRole = Qt::UserRole + 1;

/// Everything by which it is found; a line for each, so that nothing is found across two.
QString searchText(const Security &security)
{
    return (QStringList{security.code, security.name} + pinyinInitials(security.name))
        .join(QLatin1Char('\n'));
}

/// Finds by the texts of searches, and shows what the list shows.
class SecurityCompleter : public QCompleter
{
public:
    using QCompleter::QCompleter;

    QString pathFromIndex(const QModelIndex &index) const override
    {
        return index.data(Qt::DisplayRole).toString();
    }
    QStringList splitPath(const QString &path) const override { return {path.trimmed()}; }
};

} // namespace

SecurityBox::SecurityBox(QWidget *parent) : QComboBox(parent), m_search(new SecurityCompleter(model(), this))
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    m_search->setCompletionRole(searchRole);
    m_search->setCaseSensitivity(Qt::CaseInsensitive);
    m_search->setFilterMode(Qt::MatchContains);
    setCompleter(m_search);
    connect(m_search, QOverload<const QModelIndex &>::of(&QCompleter::activated), this,
            [this](const QModelIndex &row) { choose(row.data(codeRole).toString()); });
    connect(this, QOverload<int>::of(&QComboBox::activated), this,
            [this](int row) { choose(itemData(row, codeRole).toString()); });
}

void SecurityBox::setSecurities(const Securities &securities)
{
    clear();
    for (const Security &security : securities) {
        addItem(security.code + QStringLiteral("  ") + security.name, security.code);
        setItemData(count() - 1, searchText(security), searchRole);
    }
    showShown();
}

void SecurityBox::showSecurity(const QString &code)
{
    m_shown = code;
    showShown();
}

void SecurityBox::showShown()
{
    const int row = findData(m_shown, codeRole);
    setCurrentIndex(row);
    setEditText(itemText(row));
    lineEdit()->setCursorPosition(0);
}

void SecurityBox::beginSearch(const QString &typed)
{
    setFocus(Qt::ShortcutFocusReason);
    lineEdit()->selectAll();
    if (!typed.isEmpty()) {
        lineEdit()->insert(typed);
        m_search->setCompletionPrefix(typed);
        m_search->complete();
    }
}

void SecurityBox::choose(const QString &code)
{
    if (!code.isEmpty()) {
        Q_EMIT codeChosen(code); // the box shows it when the chart does
    }
    showShown();
    Q_EMIT left();
}

void SecurityBox::chooseFirst()
{
    m_search->setCompletionPrefix(currentText());
    const QModelIndex first = m_search->completionModel()->index(0, 0);
    choose(currentText() == itemText(findData(m_shown, codeRole)) ? QString()
                                                                  : first.data(codeRole).toString());
}

void SecurityBox::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        chooseFirst();
    } else if (event->key() == Qt::Key_Escape) {
        choose({});
    } else {
        QComboBox::keyPressEvent(event);
    }
}

void SecurityBox::focusOutEvent(QFocusEvent *event)
{
    QComboBox::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        showShown();
    }
}

} // namespace Terminal
