// SPDX-License-Identifier: Apache-2.0
//
// readers PATH [HELD]: prints the size of the picture by `imageSize`, then that of its metadata
// record, from the root folder, as a program that was started elsewhere may change its folder; with
// HELD while another thread asks the same about that picture, whose file system may
// never answer.
#include <imageutils/imageutils.h>
#include <metadatareader/metadatareader.h>

#include <QtCore/QFile>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <thread>

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    const QString path = QFile::decodeName(argv[1]);
    std::filesystem::current_path("/");
    if (argc > 2) {
        std::thread([held = QFile::decodeName(argv[2])] {
            NImageUtils::imageSize(held);
            readMetadata(held);
        }).detach();
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }
    const QSize size = NImageUtils::imageSize(path);
    const NExifToolMetadata record = readMetadata(path);
    std::printf("%d x %d, %d x %d\n", size.width(), size.height(), record.imageWidth(),
                record.imageHeight());
    std::fflush(stdout);
    if (argc > 2)
        std::_Exit(0); // the other thread may still wait
    return 0;
}
