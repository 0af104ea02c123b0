// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef INSTALL_P_H
#define INSTALL_P_H

class QTableFastView;

/*!
 * \brief What widgets know of how they are told to screen readers.
 *
 * The widgets' constructors install what makes their interfaces: there is nothing to ask for
 * before, static libraries bring it along, and no order of static objects matters.
 */
namespace Accessible {

//! Lets Qt ask for the interfaces of table views and those derived, as long as the library is
//! loaded. Costs nothing but the first time.
void installTableFactory();
//! The same of icon buttons.
void installIconButtonFactory();
//! The same of busy indicators.
void installIndicatorFactory();

//! Has the interface of \a view listen to the view's present models, if anybody listens to it.
void watchModels(const QTableFastView *view);

} // namespace Accessible

#endif // INSTALL_P_H
