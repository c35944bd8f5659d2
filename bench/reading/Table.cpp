#include "Table.h"

#include <algorithm>

namespace Lumenote::Bench {

using namespace Qt::StringLiterals;

Table::Table(QStringList titles)
{
    m_rows.append(std::move(titles));
}

void Table::addRow(const QStringList& cells)
{
    Q_ASSERT(cells.size() == m_rows.first().size());
    m_rows.append(cells);
}

QString Table::toMarkdown() const
{
    QList<qsizetype> widths(m_rows.first().size(), 0);
    for (const QStringList& row : m_rows) {
        for (qsizetype i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }
    QString text;
    const auto addLine = [&](const QStringList& cells, QChar padding) {
        for (qsizetype i = 0; i < cells.size(); ++i)
            text += u"| "_s + cells[i].leftJustified(widths[i], padding) + u' ';
        text += u"|\n"_s;
    };
    addLine(m_rows.first(), u' ');
    addLine(QStringList(widths.size(), u"-"_s), u'-');
    for (qsizetype i = 1; i < m_rows.size(); ++i)
        addLine(m_rows[i], u' ');
    return text;
}

QString Table::number(double value, int digits)
{
    return QString::number(value, 'f', digits);
}

} // namespace Lumenote::Bench
