// Child of the crash test: saves two large histories in turn through the store's saver and
// its worker thread, forever, writing one byte to stdout after each save, until killed.
#include "CrashHistory.h"
#include "storage/Persistence.h"
#include "store/DataFileSaver.h"
#include "store/ThreadWorkQueue.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc < 2)
        return 2;
    const QString directory = QString::fromLocal8Bit(argv[1]);
    const QList<quill::StudySession> histories[2] = {quill::test::crashHistory(0),
                                                     quill::test::crashHistory(1)};
    // Started as the store starts: from the file a killed predecessor left.
    const quill::Persistence::LoadResult loaded = quill::Persistence::load(directory);
    quill::DataFileSaver saver(std::make_shared<quill::ThreadWorkQueue>(), false, loaded.data,
                               loaded.stamp);
    for (int i = 1;; ++i) {
        saver.save(directory, {quill::AppSettings{}, histories[i % 2], {}}, QDateTime(), 0, {});
        saver.waitForIdle();
        QCoreApplication::processEvents();
        std::fputc('.', stdout);
        std::fflush(stdout);
    }
}
