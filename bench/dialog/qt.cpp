// The dialog by Qt, on its own headless platform.
#include "Places.h"

#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <benchmark/benchmark.h>

namespace {

QApplication& Application()
{
    static int count = 1;
    static char name[] = "dialog_bench";
    static char* arguments[] = { name, nullptr };
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static QApplication application(count, arguments);
    return application;
}

void Qt(benchmark::State& state)
{
    Application();
    for (auto _ : state) {
        QWidget window;
        window.resize(kWidth, kHeight);
        for (const Place& place : Places()) {
            QWidget* widget = nullptr;
            switch (place.shape) {
            case Shape::Button: widget = new QPushButton(place.text, &window); break;
            case Shape::CheckBox: widget = new QCheckBox(place.text, &window); break;
            case Shape::Text: widget = new QLabel(place.text, &window); break;
            }
            widget->setGeometry(place.x, place.y, place.width, place.height);
        }
        window.show();
        QApplication::processEvents();
        QImage picture(kWidth, kHeight, QImage::Format_RGB32);
        window.render(&picture);
        benchmark::DoNotOptimize(picture.bits());
    }
}
BENCHMARK(Qt)->Unit(benchmark::kMicrosecond);

} // namespace
