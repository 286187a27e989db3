#include "shell/application.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication program(argc, argv);
    return 0;
}
