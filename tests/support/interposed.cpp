// SPDX-License-Identifier: Apache-2.0
//
// Functions that stand before those of the system's libraries, for tst_osutils. fsync() fails with
// the error FSYNC while that environment variable is set. X servers have
// version 1.RANDR of the extension RANDR where that variable is set, for Qt as well.
#include <QtCore/QtGlobal>

#include <cerrno>
#include <dlfcn.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <xcb/randr.h>

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED int fsync(int descriptor)
{
    if (!qEnvironmentVariableIsEmpty("FSYNC")) {
        errno = qEnvironmentVariableIntValue("FSYNC");
        return -1;
    }
    return int(syscall(SYS_fsync, descriptor));
}

EXPORTED xcb_randr_query_version_reply_t*
xcb_randr_query_version_reply(xcb_connection_t* connection, xcb_randr_query_version_cookie_t cookie,
                              xcb_generic_error_t** error)
{
    static const auto original = reinterpret_cast<decltype(&xcb_randr_query_version_reply)>(
        dlsym(RTLD_NEXT, "xcb_randr_query_version_reply"));
    xcb_randr_query_version_reply_t* const reply = original(connection, cookie, error);
    if (reply && !qEnvironmentVariableIsEmpty("RANDR"))
        reply->minor_version = std::uint32_t(qEnvironmentVariableIntValue("RANDR"));
    return reply;
}
