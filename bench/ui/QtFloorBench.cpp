// The least a Qt desktop app with a 0.25 s step can cost at rest: a QApplication (as the app
// has, for its tray) whose timer does nothing. measure.sh prints its CPU beside the app's, so
// the app's own share of its rest cost is what lies above this line on the machine at hand.
#include <QApplication>
#include <QTimer>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QTimer step;
    step.setInterval(250);
    QObject::connect(&step, &QTimer::timeout, &step, [] {});
    step.start();
    return QApplication::exec();
}
