// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CELLTEXT_P_H
#define CELLTEXT_P_H

#include <QCoreApplication>
#include <QFontMetrics>
#include <QTextLayout>

#include <memory>

class QPainter;

//! What was asked of fonts and what text was shaped, kept for the next cell.
//! GUI thread only.
namespace CellText {

//! The one object of type \a T. It dies with the application object, because
//! fonts and palettes must not outlive that.
template<typename T> T &perApplication()
{
    static std::unique_ptr<T> object;
    if (!object) {
        object = std::make_unique<T>();
        qAddPostRoutine([] { object.reset(); });
    }
    return *object;
}

//! font.toString(), remembered for the last few fonts.
QString fontText(const QFont &font);

//! Metrics of \a font on the device of its creation, remembered.
QFontMetrics metricsOf(const QFont &font);

//! metrics.horizontalAdvance(text), remembered for the last few fonts.
int referenceWidth(const QFontMetrics &metrics, const QString &text);

//! metrics.elidedText(text, mode, width). While a Line of these metrics is alive
//! it keeps what was shaped for measuring.
QString elided(const QString &text, const QFontMetrics &metrics, Qt::TextElideMode mode, int width);

/*!
 * \brief The one line of text of a cell, shaped once.
 *
 * What elided() measures while the line is alive is what draw() draws; any other
 * text is drawn as well, only slower.
 */
class Line
{
public:
    //! A line in the font of \a painter, which must stay and keep its font.
    explicit Line(QPainter *painter);
    ~Line();
    Q_DISABLE_COPY_MOVE(Line)

    //! The metrics of the painter's font, to be handed to elided().
    const QFontMetrics &metrics() const { return m_metrics; }

    //! painter->drawText(rect, alignment, text).
    void draw(const QRect &rect, Qt::Alignment alignment, const QString &text);

private:
    friend QString elided(const QString &text, const QFontMetrics &metrics, Qt::TextElideMode mode,
                          int width);

    bool canShape(const QString &text) const;
    QTextLine shape(const QString &text);
    bool surelyFits(const QTextLine &line, int width) const;
    bool canElide(const QString &text) const;
    QString elidedRight(const QString &text, const QTextLine &line, int width) const;
    void drawShaped(const QRect &rect, Qt::Alignment alignment, const QTextLine &line);

    QPainter *m_painter;
    Line *m_outer;          //!< the line that is being painted around this one
    QFont m_font;           //!< the painter's, with what Qt looked up for it
    QFontMetrics m_metrics; //!< of m_font
    double m_ellipsis = -1; //!< its advance, negative if there is none
    QTextLayout m_layout;   //!< of one line, empty until something was shaped
};

} // namespace CellText

#endif // CELLTEXT_P_H
