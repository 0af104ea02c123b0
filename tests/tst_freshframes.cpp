// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "windows/freshframes.h"

#include <QStringListModel>
#include <QTest>

namespace {

constexpr int s_screen = 10; // rows
constexpr int s_enough = 8;  // frames

} // namespace

class tst_FreshFrames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsPages();
    void goesByRowsAndNotByNumbers();
    void takesAsManyOthersToEnd();
    void knowsNothingOfNoRows();

private:
    //! Whether \a frames is another after a frame that begins with \a row.
    bool add(int row) { return m_frames.add(m_model.index(row), s_screen); }

    QStringListModel m_model {QStringList(1000, "row")};
    FreshFrames m_frames;
};

void tst_FreshFrames::tellsPages()
{
    m_frames = {};
    QVERIFY(!add(0));
    for (int page = 1; page < s_enough; ++page)
        QVERIFY(!add(page * s_screen));
    QVERIFY(!m_frames.areFresh());
    QVERIFY(add(0)); // back is as far as on
    QVERIFY(m_frames.areFresh());
    m_frames = {};
    for (int row = 0; row < 3 * s_enough; ++row)
        QVERIFY(!add(row * (s_screen - 1)));
    QVERIFY(!m_frames.areFresh());
}

//! Rows that come above those on the screen change none of them; those that come at the top
//! change all.
void tst_FreshFrames::goesByRowsAndNotByNumbers()
{
    m_frames = {};
    add(500);
    for (int i = 1; i <= 2 * s_enough; ++i) {
        m_model.insertRows(0, s_screen);
        QVERIFY(!add(500 + i * s_screen));
    }
    m_frames = {};
    add(0);
    for (int i = 0; i < s_enough; ++i) {
        m_model.insertRows(0, s_screen);
        add(0);
    }
    QVERIFY(m_frames.areFresh());
}

void tst_FreshFrames::takesAsManyOthersToEnd()
{
    m_frames = {};
    for (int page = 0; page <= 2 * s_enough; ++page)
        add(page * s_screen);
    QVERIFY(m_frames.areFresh());
    const int last = 2 * s_enough * s_screen;
    for (int row = 1; row < s_enough; ++row)
        QVERIFY(!add(last + row));
    QVERIFY(m_frames.areFresh());
    QVERIFY(add(last + s_enough));
    QVERIFY(!m_frames.areFresh());
}

void tst_FreshFrames::knowsNothingOfNoRows()
{
    m_frames = {};
    for (int i = 0; i < 2 * s_enough; ++i)
        QVERIFY(!m_frames.add({}, s_screen));
    for (int i = 0; i < 2 * s_enough; ++i)
        QVERIFY(!m_frames.add(i % 2 ? m_model.index(i * s_screen) : QModelIndex(), s_screen));
    QVERIFY(!m_frames.areFresh());
}

QTEST_GUILESS_MAIN(tst_FreshFrames)
#include "tst_freshframes.moc"
