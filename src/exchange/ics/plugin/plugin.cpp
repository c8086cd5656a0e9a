#include "exchange/ics/plugin/event_parser.h"

#include <exception>

extern "C" orrery::exchange::IcsParser* OrreryIcsParser(int firstYear, int lastYear)
{
    try {
        return new orrery::exchange::EventParser(firstYear, lastYear);
    }
    catch (const std::exception&) { // no memory; the caller tells it
        return nullptr;
    }
}
