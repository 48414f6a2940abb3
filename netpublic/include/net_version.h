/**
 * @file net_version.h
 * The version of these headers, for the preprocessor. Major versions break source or binary
 * compatibility, minor ones add to it. The build takes the library's version from here.
 */
#ifndef NET_VERSION_H
#define NET_VERSION_H

#define NETPUBLIC_VERSION_MAJOR 1        /**< Also the number in the shared library's name. */
#define NETPUBLIC_VERSION_MINOR 0        /**< Grows when something is added. */
#define NETPUBLIC_VERSION_PATCH 0        /**< Grows with corrections. */
#define NETPUBLIC_VERSION_STRING "1.0.0" /**< The three numbers as text. */

/** The version as one number that can be compared: 1.2.3 is 10203. */
#define NETPUBLIC_VERSION (NETPUBLIC_VERSION_MAJOR * 10000 + NETPUBLIC_VERSION_MINOR * 100 + NETPUBLIC_VERSION_PATCH)

#endif
