// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef WORLD_H
#define WORLD_H

#include "reference.h"
#include "soakmodel.h"

#include <QList>
#include <QPersistentModelIndex>
#include <QRandomGenerator>
#include <QString>

#include <memory>

//! What a run is about.
struct Combination
{
    bool isBuffered;
    bool isPerPixel;
    bool isRightToLeft;
    bool isAlternating;

    static QList<Combination> all();
    QString name() const;
    friend bool operator==(const Combination &a, const Combination &b) = default;
};

//! A view, its model, and everything that may happen to them.
class World
{
public:
    //! \a hasCells: the library's delegates instead of coloured rectangles.
    World(const Combination &combination, quint64 seed, bool hasCells);
    ~World();

    //! Does step \a number, which depends on the seed and the number only, and
    //! checks the picture. Returns what is wrong, or nothing.
    QString step(int number);
    //! What the last step did.
    QString said() const { return m_said; }

private:
    using Action = void (World::*)();
    //! What is done amid a change at most.
    enum class Intrusion {
        Header,
        Cells,
        Selection,
    };
    struct Choice
    {
        int weight;
        Action action;
    };
    static const QList<Choice> &modelChoices();
    static const QList<Choice> &viewChoices();
    static const QList<Choice> &headerChoices();

    void act(const QList<Choice> &choices);
    void say(const QString &what);
    int below(int limit);
    bool chance(int percent) { return below(100) < percent; }
    QModelIndex anyCell(int first, int rows);

    // The model
    void insertRows(int row, int count);
    void removeRows(int row, int count);
    void insertAtTop();
    void insertAtEnd();
    void insertAnywhere();
    void insertNearView();
    void removeAtTop();
    void removeAnywhere();
    void removeNearView();
    void moveAnywhere();
    void moveNearView();
    void changeCell();
    void changeBlock();
    void changeUnsaid();
    void restart();
    void sortRows();
    void turnRound();
    void insertColumn();
    void removeColumn();
    void storm();

    // The view
    void scrollALittle();
    void scrollFar();
    void scrollToTop();
    void scrollToEnd();
    void scrollColumns();
    void scrollToCell();
    void resizeView();
    void resizeColumn();
    void moveColumn();
    void hideColumn();
    void showColumns();
    void selectSomething();
    void clearSelection();
    void makeCurrent();
    void pressKey();
    void toggleEnabled();
    void toggleAlternating();
    void toggleDirection();
    void changePalette();
    void changeFont();
    void replaceDelegate();
    void replaceColumnDelegate();
    void replaceRowDelegate();
    void replaceModel();
    void toggleBuffer();
    void toggleScrollMode();
    void activateOther();
    void activateView();
    void openEditor();
    void focusEditor();
    void closeEditors();

    void changeSheet();

    // The header
    void changeHeader();
    void swapColumns();
    void stretchLast();
    void setResizeMode();
    void setCascading();
    void setSectionBounds();
    void saveHeader();
    void restoreHeader();
    void resizeToContents();
    void replaceHeader();

    void listen();
    void intrude(Intrusion most);
    QAbstractItemDelegate *newDelegate(uint salt) const;
    QList<QRect> editorPlaces(const QModelIndex &index) const;
    QString check();
    QString checkPicture();
    QString checkEditors();
    QString checkRange();
    QString checkBar();
    int topRow() const;

    QRandomGenerator m_random;
    quint64 m_seed;
    bool m_hasCells;
    bool m_isIntruding = false;
    bool m_isDisturbed = false; //!< intruded upon since a change of the model began
    QByteArray m_headerState;
    int m_headerCount = -1; //!< sections that it describes
    QString m_said;
    QString m_broken; //!< a promise that an action found broken
    QList<QPersistentModelIndex> m_editors;
    std::unique_ptr<SoakModel> m_model;
    std::unique_ptr<QWidget> m_other;
    std::unique_ptr<QWidget> m_window; //!< gives transparent views something to show
    std::unique_ptr<SoakView> m_view;
};

#endif // WORLD_H
