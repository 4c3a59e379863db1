// The same window by Qt 6 Widgets.
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QWidget>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.setWindowTitle("Start");
    window.setGeometry(20, 20, 300, 120);
    QLabel text("Hello, world.", &window);
    text.setGeometry(20, 20, 260, 16);
    QPushButton button("OK", &window);
    button.setGeometry(210, 80, 70, 24);
    window.show();
    return application.exec();
}
