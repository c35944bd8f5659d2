#pragma once

#include <QStringList>

namespace Lumenote::Bench {

/// A table in Markdown, its columns padded so that it can be read as it is.
class Table {
public:
    explicit Table(QStringList titles);

    void addRow(const QStringList& cells);
    bool isEmpty() const { return m_rows.size() == 1; }
    QString toMarkdown() const;

    static QString number(double value, int digits = 2);

private:
    QList<QStringList> m_rows; ///< The titles first.
};

} // namespace Lumenote::Bench
