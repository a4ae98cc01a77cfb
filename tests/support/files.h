// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <functional>

namespace TestSupport {

/// Writes a grey ramp of the given size with OpenImageIO, as the format that it calls `format`,
/// whatever the extension of `path`; with an Orientation tag unless it is 0.
void writePicture(const QString& path, int width, int height, int orientation = 0,
                  const char* format = "jpeg");

/// Replaces the file at `path` by `bytes`.
void writeBytes(const QString& path, const QByteArray& bytes);

/// A TIFF file of one pixel with a width of 2^31 in its header.
QByteArray lyingTiff();

/// Whether the system takes `name` for a file.
bool canBeNamed(const QString& name);

/// Makes `path` the folder that QDir::tempPath() gives, and the value of TMPDIR.
void setTemporaryFolder(const QString& path);

/// Makes a named pipe; false where the system has none.
bool makePipe(const QString& path);

/// Calls `call` again and again for a second, while another thread exchanges the file at `path` for
/// a pipe and back. Gives how many of the calls waited for a writer of the pipe; each such call is
/// released after ten seconds. 0 where the system has no pipes.
int callsHeldUpByPipe(const QString& path, const std::function<void()>& call);

/// Gives the file at `path` a second name, by a symbolic link.
bool linkTo(const QString& path, const QString& link);

/// Makes a link to a device that never ends; false where the system has none.
bool linkEndlessDevice(const QString& path);

/// Lets writing fail at the system's limit of file sizes, which else ends the program.
void letFileLimitsFail();

/// Leaves the process `left` free file descriptors while it lives; `isActive` is false where the
/// system cannot do that.
class FewDescriptors
{
public:
    explicit FewDescriptors(int left);
    ~FewDescriptors();
    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;

    bool isActive() const { return m_before > 0; }

private:
    unsigned long m_before = 0;
};

} // namespace TestSupport
