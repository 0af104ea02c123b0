// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DISSECTION_H
#define DISSECTION_H

#include <QByteArrayView>
#include <QString>
#include <QStringList>

/*!
 * \brief What a packet says: who sent it to whom, by which protocol, and what about.
 *
 * The texts are in English, as the standards of protocols are.
 */
struct Dissection
{
    QString source;         //!< address of the outermost network, or of the link
    QString destination;    //!< the same of who it is sent to
    QString protocol;       //!< the innermost one that is known
    QString info;           //!< in a line
    QStringList layers;     //!< lines about each layer from the outermost on, if they are wanted
    bool hasLayers = false; //!< they are

    //! Adds a line about a layer, which \a text makes, if lines are wanted.
    template<typename Text> void addLayer(Text text)
    {
        if (hasLayers)
            layers.append(text());
    }
};

//! Kinds of links that packets are captured from, by their numbers in captures.
enum class LinkType {
    Null = 0,          //!< loopback, family in the byte order of the machine
    Ethernet = 1,      //!< with or without tags of virtual networks
    Raw = 12,          //!< IP of either version
    RawOfOthers = 14,  //!< the same on other systems
    RawInFile = 101,   //!< the same as files have it
    Loop = 108,        //!< loopback, family in network byte order
    LinuxCooked = 113, //!< any interface of Linux
    Ipv4 = 228,
    Ipv6 = 229,
    LinuxCooked2 = 276 //!< any interface of Linux, second version
};

//! Reads the \a bytes of a packet that was captured from \a link, which may be of any kind, and
//! may be cut off anywhere. With \a hasLayers for a reader of details, too.
Dissection dissect(int link, QByteArrayView bytes, bool hasLayers = false);

#endif // DISSECTION_H
