// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/application.h>
#include <apps/lorix/console.h>
#include <apps/lorix/interrupt.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication qtApplication(argc, argv);
    lorix::cli::Interrupt::install();
    lorix::cli::Console console(stdout, stderr);
    lorix::cli::Application application(console);
    return application.run(QCoreApplication::arguments().mid(1));
}
