// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include <abstractitemviewfind.h>
#include <bcdiimeta.h>
#include <bcdiivalue.h>
#include <decimalsortproxy.h>
#include <itemdelegate.h>
#include <itemviewfindtoolbar.h>
#include <qtablefastview.h>
#include <translations.h>

#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QStringListModel>
#include <QTranslator>

#include <cstdio>

namespace {

//! Pictures and texts are there before anything of the library is made, with a static
//! library as well.
bool hasResources()
{
    QTranslator translator;
    return QFile::exists(QStringLiteral(":/icons/16x16/close.png"))
        && QFile::exists(QStringLiteral(":/icons/drovik/16x16/editclear.png"))
        && translator.load(QStringLiteral(":/translations/vantix_ru"));
}

bool speaksRussian()
{
    return vantixInstallTranslations(QLocale(QLocale::Russian))
        && QCoreApplication::translate("FilterLineEdit", "Clear") != QStringLiteral("Clear");
}

bool showsRows()
{
    QStringListModel model({QStringLiteral("one"), QStringLiteral("two")});
    QTableFastView view;
    view.setItemDelegate(new Vantix::ItemDelegate(&view));
    view.setModel(&model);
    view.show();
    AbstractItemViewFind find;
    find.setView(&view);
    find.setHeader(view.header());
    ItemViewFindToolBar panel;
    panel.setViewFind(&find);
    QCoreApplication::processEvents();
    return view.indexAt(QPoint(2, 2)) == model.index(0, 0) && find.findNext(QStringLiteral("two"))
        && view.currentIndex().row() == 1;
}

bool showsDecimals()
{
    using Money = BCDIIValue<15, 2>;
    vantixRegisterDecimals<Money>();
    const DecimalSortProxy<> proxy;
    const auto price = Money::parse("19.90");
    return price && QVariant::fromValue(price.value).toString() == QStringLiteral("19.90");
}

} // namespace

#ifdef HAS_DERIVED_VIEW
bool derivedViewKeepsItsDelay();
#else
static bool derivedViewKeepsItsDelay()
{
    return true;
}
#endif

int main(int argc, char *argv[])
{
    const bool areThere = hasResources();
    const QApplication app(argc, argv);
    const bool isTranslated = speaksRussian();
    const bool isShown = showsRows();
    const bool isCounted = showsDecimals();
    const bool isDerived = derivedViewKeepsItsDelay();
    std::printf("resources: %d, translations: %d, rows: %d, decimals: %d, derived: %d\n", areThere,
                isTranslated, isShown, isCounted, isDerived);
    return areThere && isTranslated && isShown && isCounted && isDerived ? 0 : 1;
}
