// How an application moves over piece by piece: the factory's services as before, and beside them
// the interface of <nvrhw/nvrhw.h> on the same lines.
#include <iostream>
#include <nvrhw/alarm/IOAlarmOutManager.h>
#include <nvrhw/gpio/GPIOOperator.h>
#include <nvrhw/nvrhw.h>
#include <nvrhw/service/HardwareServiceFactory.h>

int main() try {
    auto* factory = HardwareServiceFactory::getInstance();
    factory->start();
    {
        // What there was, without a name to mistype and a holder to cast.
        const auto outputs = nvrhw::service<IOAlarmOutManager>();
        outputs->setAlarmOutMode(1, AlarmOutMode(AlarmOutMode::Steady, AlarmOutMode::Direct, 0, 0));

        // A SafePointer may raise where it is destroyed; what shares it so logs that instead.
        const auto levelOf =
            [gpio = nvrhw::share(nvrhw::service<GPIOOperator>())](const nvrhw::Line& line) {
                int level = -1;
                gpio->get(line.bank, line.bit, level);
                return level;
            };

        // What is new, on the services that run; whoever drives an output, it is told here.
        const nvrhw::Board board = nvrhw::Board::running();
        auto watch = board.onOutput(
            [](const nvrhw::OutputChange& change) { std::cout << change << std::endl; });
        const nvrhw::Output output = board.output(1);
        outputs->triggerAlarm(1);
        std::cout << "level " << levelOf(output.line) << std::endl;
        output.rest();
        watch.finish(); // tells what is still to be told
    } // first the watch, then the board, then the services' pointers: all before stop()
    factory->stop();
} catch (const nvrhw::Error& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
