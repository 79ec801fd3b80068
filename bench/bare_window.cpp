// The least that a program with a window like the editor's costs: Qt, its style Fusion, a window
// with eight empty tabs. What the editor's start is measured against.

#include <QApplication>
#include <QMainWindow>
#include <QTabWidget>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setStyle("Fusion");
  QMainWindow window;
  auto* tabs = new QTabWidget(&window);
  for (int i = 0; i < 8; ++i) tabs->addTab(new QWidget, QString("Tab &%1").arg(i));
  window.setCentralWidget(tabs);
  window.setFixedSize(588, 420);
  window.show();
  return QApplication::exec();
}
