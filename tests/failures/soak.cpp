// SPDX-License-Identifier: Apache-2.0
//
// soak SECONDS [plant]
//
// Eight threads use the library at once for so many seconds: four ask for sizes of files that a
// fifth rewrites, removes and makes again, two resample, and one releases what they made. Built
// with the thread sanitizer, which ends the program at a data race; `plant` makes one, to show that
// it does.
#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>

#include <support/matrices.h>
#include <support/threadpool.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int files = 12;
std::atomic<bool> isOver = false;
std::atomic<long> answers = 0, results = 0, mistakes = 0;
std::mutex queueMutex;
std::vector<cv::Mat> queue;
int planted = 0;

int widthOf(int file) { return 10 + file; } // of each version; heights differ

// A string of its own in each call: the sanitizer does not see how Qt counts references.
QString pathOf(const std::string& folder, int file)
{
    return QString::fromStdString(folder + '/' + std::to_string(file) + ".bmp");
}

void askSizes(const std::string& folder, unsigned seed, bool plants)
{
    std::mt19937 random(seed);
    while (!isOver) {
        const int file = int(random() % files);
        const QSize size = NImageUtils::imageSize(pathOf(folder, file));
        mistakes += size.isValid() && size.width() != widthOf(file);
        ++answers;
        if (plants)
            ++planted;
    }
}

void changeFiles(const std::string& folder)
{
    std::mt19937 random(1);
    while (!isOver) {
        const int file = int(random() % files);
        const QString path = pathOf(folder, file);
        if (random() % 4 == 0)
            QFile::remove(path);
        else
            QImage(widthOf(file), 1 + int(random() % 40), QImage::Format_RGB32).save(path);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

void resample(const cv::Mat& source)
{
    while (!isOver) {
        const cv::Mat result = CvUtils::resize(source, 0.7, 0, 0, 0, 0, 0.5F);
        const std::lock_guard lock(queueMutex);
        if (queue.size() < 16)
            queue.push_back(result);
    }
}

void release(const cv::Mat& expected)
{
    while (!isOver) {
        std::vector<cv::Mat> taken;
        {
            const std::lock_guard lock(queueMutex);
            taken.swap(queue);
        }
        for (const cv::Mat& mat : taken)
            mistakes += !TestSupport::sameBytes(mat, expected);
        results += long(taken.size());
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return EXIT_FAILURE;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    TestSupport::useThreads(2);
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    const cv::Mat source = TestSupport::noise(120, 90, CV_32FC3);
    const cv::Mat expected = CvUtils::resize(source, 0.7, 0, 0, 0, 0, 0.5F);

    std::vector<std::thread> threads;
    for (unsigned seed = 0; seed < 4; ++seed)
        threads.emplace_back(askSizes, path, seed, argc > 2);
    threads.emplace_back(changeFiles, path);
    threads.emplace_back(resample, source);
    threads.emplace_back(resample, source);
    threads.emplace_back(release, expected);
    std::this_thread::sleep_for(std::chrono::seconds(std::atoi(argv[1])));
    isOver = true;
    for (std::thread& thread : threads)
        thread.join();
    std::printf("%ld sizes, %ld pictures, %ld mistakes\n", answers.load(), results.load(),
                mistakes.load());
    return mistakes == 0 && answers > 100 && results > 10 ? EXIT_SUCCESS : EXIT_FAILURE;
}
