// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATATABLES_H
#define DATATABLES_H

#include <QAbstractItemModel>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <QTest>
#include <QVariant>

//! A connection that writes what a test wants others to see.
class Writer
{
public:
    explicit Writer(const QString &path)
        : m_name(QStringLiteral("writer-%1").arg(path))
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        database.setDatabaseName(path);
        if (!database.open())
            qFatal("%s cannot be opened.", qPrintable(path));
    }
    //! Another kind of database, which is open.
    explicit Writer(const QSqlDatabase &database)
        : m_name(database.connectionName())
    {
    }
    ~Writer()
    {
        QSqlDatabase::database(m_name, false).close();
        QSqlDatabase::removeDatabase(m_name);
    }
    Q_DISABLE_COPY_MOVE(Writer)

    void run(const QString &text, const QVariantList &values = {}) const
    {
        QSqlQuery query(QSqlDatabase::database(m_name, false));
        // Servers prepare nothing but queries.
        bool isDone = !values.isEmpty() && query.prepare(text);
        for (const QVariant &value : values)
            query.addBindValue(value);
        isDone = values.isEmpty() ? query.exec(text) : isDone && query.exec();
        if (!isDone)
            qFatal("%s: %s", qPrintable(text), qPrintable(query.lastError().text()));
    }
    //! The rows of \a text, their values between bars; NULL as such.
    QStringList rows(const QString &text) const
    {
        QSqlQuery query(QSqlDatabase::database(m_name, false));
        if (!query.exec(text))
            qFatal("%s: %s", qPrintable(text), qPrintable(query.lastError().text()));
        QStringList rows;
        while (query.next()) {
            QStringList values;
            for (int i = 0, count = query.record().count(); i < count; ++i)
                values << (query.isNull(i) ? QStringLiteral("NULL") : query.value(i).toString());
            rows << values.join(u'|');
        }
        return rows;
    }

private:
    QString m_name;
};

//! A row of \a model as Writer::rows() gives it.
inline QString shownRow(const QAbstractItemModel &model, int row)
{
    QStringList values;
    for (int column = 0; column < model.columnCount(); ++column)
        values << model.index(row, column).data().toString();
    return values.join(u'|');
}

#endif // DATATABLES_H
