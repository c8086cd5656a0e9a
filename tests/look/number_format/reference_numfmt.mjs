// Shows values as numfmt does: reads a JSON array of [code, value], writes a JSON array of texts; null where
// numfmt refuses the code.

import { readFileSync } from 'node:fs';
import { format } from 'numfmt';

function show([code, value]) {
    try {
        return format(code, value);
    }
    catch {
        return null;
    }
}

const pairs = JSON.parse(readFileSync(0, 'utf8'));
process.stdout.write(JSON.stringify(pairs.map(show)));
