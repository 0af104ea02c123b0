// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMALSORTPROXY_H
#define DECIMALSORTPROXY_H

#include "bcdiimeta.h"

#include <QModelIndex>
#include <QSortFilterProxyModel>
#include <QVariant>

/*!
 * \brief A proxy that sorts decimals by value.
 *
 * Qt's proxies sort types that they do not know by their texts, "10.00" before "9.00". This
 * one, over QSortFilterProxyModel or a class derived from it, sorts as vantixDecimalLessThan()
 * does where the sort role gives a registered decimal on either side, and as \a Base elsewhere.
 *
 * \code
 * vantixRegisterDecimals<BCDIIValue<15, 2>>();
 * QTableFastView view;
 * auto *proxy = new DecimalSortProxy<SortFilterProxyModel>(&view);
 * view.setModel(proxy);
 * \endcode
 *
 * \since 0.2
 */
template<typename Base = QSortFilterProxyModel> class DecimalSortProxy : public Base
{
public:
    using Base::Base;

protected:
    bool lessThan(const QModelIndex &source_left, const QModelIndex &source_right) const override
    {
        const QVariant left = source_left.data(this->sortRole());
        const QVariant right = source_right.data(this->sortRole());
        if (vantixIsDecimal(left) || vantixIsDecimal(right))
            return vantixDecimalLessThan(left, right);
        return Base::lessThan(source_left, source_right);
    }
};

#endif // DECIMALSORTPROXY_H
