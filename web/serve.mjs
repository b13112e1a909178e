// Serves a built site on this machine, as any static host would: every unknown path gives the page.
// Used by ./run web and by the tests; the headers are those that docs/hosts.md asks of other servers.
import {createServer} from 'node:http';
import {networkInterfaces} from 'node:os';
import {readFileSync} from 'node:fs';
import {join} from 'node:path';
import {parseArgs} from 'node:util';
import {pathToFileURL} from 'node:url';
import sirv from 'sirv';

/** The page's own policy, and what a policy in a page cannot say. */
function policyOf(site) {
    const page = readFileSync(join(site, 'index.html'), 'utf8');
    const [, policy] = page.match(/http-equiv="Content-Security-Policy" content="([^"]+)"/);
    return `${policy}; frame-ancestors 'none'`;
}

/** A server that listens; files are read anew for each request, so that a build shows with the next one. */
export function serve(site, {port = 0, host = '127.0.0.1'} = {}) {
    const policy = policyOf(site);
    const files = sirv(site, {
        dev: true,
        etag: true,
        single: true,
        // Views end in numbers with a point, which look like file names with an ending.
        ignores: false,
        setHeaders(response) {
            response.setHeader('Content-Security-Policy', policy);
            response.setHeader('X-Content-Type-Options', 'nosniff');
        },
    });
    return new Promise((resolve, reject) => {
        const server = createServer(files);
        server.once('error', reject);
        server.listen(port, host, () => resolve(server));
    });
}

const otherAddresses = () => Object.values(networkInterfaces()).flat()
    .filter((address) => address.family === 'IPv4' && !address.internal)
    .map((address) => address.address);

async function main() {
    const {values, positionals} = parseArgs({
        allowPositionals: true,
        options: {port: {type: 'string', default: '8080'}, lan: {type: 'boolean', default: false}},
    });
    const host = values.lan ? '0.0.0.0' : '127.0.0.1';
    try {
        await serve(positionals[0], {port: Number(values.port), host});
    } catch (error) {
        const taken = error.code === 'EADDRINUSE';
        console.error(`zentaro: ${taken ? `port ${values.port} is taken; choose another with --port` : error.message}`);
        process.exit(1);
    }
    console.log(`http://localhost:${values.port}/`);
    for (const address of otherAddresses()) {
        const elsewhere = `http://${address}:${values.port}/`;
        if (values.lan) console.log(elsewhere);
        else console.error(`zentaro: with --lan also ${elsewhere} for other devices on the network`);
    }
}

if (import.meta.url === pathToFileURL(process.argv[1]).href) main();
