// Prints the holidays that the date-holidays package knows, as JSON:
//     node reference_holidays.mjs FIRST_YEAR LAST_YEAR REGION...
// A region is a country code, or country and state joined by "-" ("GB-SCT"). The answer maps each
// region to its list of { date, type, names, substitute }, the names in all languages it has. A holiday of
// several days is listed for each. Countries that the package does not have are left out.
import Holidays from "date-holidays";

const DAY = 24 * 60 * 60 * 1000;
const [first, last] = process.argv.slice(2, 4).map(Number);

function namesByRule(calendar, languages, year) {
    const names = new Map();
    for (const language of languages)
        for (const day of calendar.getHolidays(year, language)) {
            names.set(day.rule, (names.get(day.rule) ?? new Set()).add(day.name));
        }
    return names;
}

function holidaysOf(region) {
    const calendar = new Holidays(...region.split("-"));
    const languages = [...calendar.getLanguages()]; // a copy: getHolidays() adds to the list itself
    const days = [];
    for (let year = first; year <= last; year++) {
        const names = namesByRule(calendar, languages, year);
        for (const day of calendar.getHolidays(year)) {
            const length = Math.max(1, Math.round((day.end - day.start) / DAY));
            const begin = Date.parse(day.date.slice(0, 10) + "T00:00:00Z");
            for (let i = 0; i < length; i++)
                days.push({
                    date: new Date(begin + i * DAY).toISOString().slice(0, 10),
                    type: day.type,
                    names: [...names.get(day.rule)],
                    substitute: Boolean(day.substitute),
                });
        }
    }
    if (days.length === 0) throw new Error(`no holidays known for ${region}`);
    return days;
}

const answer = {};
const known = new Holidays().getCountries();
for (const region of process.argv.slice(4))
    if (region.split("-")[0] in known) answer[region] = holidaysOf(region);
process.stdout.write(JSON.stringify(answer));
