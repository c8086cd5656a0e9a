// Prints the public holidays that npm's date-holidays knows, as JSON:
//     node date_holidays.mjs FIRST_YEAR LAST_YEAR REGION...
// A region is a country code, or country and state joined by "-" ("GB-SCT"). The answer maps each
// region that it covers to its days ("2027-01-01") with their names.
import Holidays from "date-holidays";

const DAY = 24 * 60 * 60 * 1000;

// Regions that the package knows by a former code of ISO 3166-2.
const FORMER = { "IN-CG": "IN-CT", "IN-OD": "IN-OR", "IN-TS": "IN-TG", "IN-UK": "IN-UT" };

function publicDays(region, first, last) {
    const [country, state] = (FORMER[region] ?? region).split("-");
    const calendar = new Holidays(country, state);
    const known = state ? (calendar.getStates(country) ?? {}) : calendar.getCountries();
    if (!((state || country) in known)) return null;
    const days = {};
    for (let year = first; year <= last; year++)
        for (const holiday of calendar.getHolidays(year)) {
            if (holiday.type !== "public") continue;
            const length = Math.max(1, Math.round((holiday.end - holiday.start) / DAY));
            const begin = Date.parse(holiday.date.slice(0, 10) + "T00:00:00Z");
            for (let day = 0; day < length; day++)
                days[new Date(begin + day * DAY).toISOString().slice(0, 10)] = holiday.name;
        }
    return days;
}

const [first, last] = process.argv.slice(2, 4).map(Number);
const answer = {};
for (const region of process.argv.slice(4)) {
    const days = publicDays(region, first, last);
    if (days) answer[region] = days;
}
process.stdout.write(JSON.stringify(answer));
