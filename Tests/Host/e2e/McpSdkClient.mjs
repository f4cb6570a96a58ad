// End to end: `calvorn-bp serve` as an agent's client sees it, through the official MCP TypeScript
// SDK. Usage: node McpSdkClient.mjs <path to calvorn-bp>
import assert from 'node:assert/strict';
import { spawn, spawnSync } from 'node:child_process';
import { once } from 'node:events';
import { existsSync } from 'node:fs';
import { createInterface } from 'node:readline';

import { Client } from '@modelcontextprotocol/sdk/client/index.js';
import { StdioClientTransport } from '@modelcontextprotocol/sdk/client/stdio.js';
import { CallToolResultSchema, EmptyResultSchema, ErrorCode, McpError } from '@modelcontextprotocol/sdk/types.js';

const binary = process.argv[2];
if (!binary) {
  console.error('usage: node McpSdkClient.mjs <path to calvorn-bp>');
  process.exit(2);
}

async function expectProtocolError(promise, code, messageStart) {
  await assert.rejects(promise, (error) => {
    assert.ok(error instanceof McpError, `expected an McpError, got ${error}`);
    assert.equal(error.code, code);
    assert.ok(error.message.includes(messageStart), error.message);
    return true;
  });
}

async function sdkSession() {
  const transport = new StdioClientTransport({ command: binary, args: ['serve'], stderr: 'pipe' });
  transport.stderr.resume();
  // The client hands the agreed revision to transports that want it; this one is told too.
  let agreedVersion = null;
  transport.setProtocolVersion = (version) => { agreedVersion = version; };
  const client = new Client({ name: 'calvorn-e2e', version: '1.0.0' });
  let toolCount = 0;
  try {
    // The SDK asks for its newest revision; the server answers with one both sides speak.
    await client.connect(transport);
    const info = client.getServerVersion();
    assert.equal(info.name, 'calvorn-bp');
    assert.match(info.version, /^\d+\.\d+\.\d+$/);
    assert.deepEqual(client.getServerCapabilities(), { tools: { listChanged: false } });
    assert.match(client.getInstructions(), /CalvornSample/);
    assert.equal(agreedVersion, '2025-06-18');

    await client.ping();

    // The tools an agent is offered are exactly those the command line lists.
    const { tools } = await client.listTools();
    toolCount = tools.length;
    const listed = spawnSync(binary, ['tools', '--json'], { encoding: 'utf8' });
    assert.equal(listed.status, 0, listed.stderr);
    const fromCli = JSON.parse(listed.stdout);
    assert.deepEqual(
      tools.map(({ name, description, inputSchema }) => ({ name, description, inputSchema })),
      fromCli.map(({ name, description, inputSchema }) => ({ name, description, inputSchema })));
    for (const tool of tools) {
      assert.equal(tool.inputSchema.type, 'object', tool.name);
      assert.equal(tool.outputSchema.type, 'object', tool.name);
    }

    // An unknown tool is a failed call the agent can read, not a broken session. The SDK checks
    // the structured content against the tool's output schema when the tool has one.
    const unknown = await client.callTool({ name: 'no_such_tool', arguments: { path: '/Game/BP_Door' } });
    assert.equal(unknown.isError, true);
    assert.deepEqual(unknown.structuredContent, {
      success: false, errors: ['Unknown tool: no_such_tool'], warnings: [], messages: [], data: {}, read_backs: [],
    });
    assert.equal(unknown.content.length, 1);
    assert.equal(unknown.content[0].type, 'text');
    assert.deepEqual(JSON.parse(unknown.content[0].text), unknown.structuredContent);

    // Every registered tool answers a call with no parameters with a well-formed result whose
    // isError agrees with its own success flag.
    for (const tool of tools) {
      const result = await client.callTool({ name: tool.name, arguments: {} });
      assert.equal(result.isError, !result.structuredContent.success, tool.name);
      assert.deepEqual(JSON.parse(result.content[0].text), result.structuredContent, tool.name);
    }

    // Protocol errors reach the client as JSON-RPC errors, and the session goes on.
    await expectProtocolError(client.request({ method: 'tools/call', params: { arguments: {} } }, CallToolResultSchema),
      ErrorCode.InvalidParams, '"name" must be the name of a tool');
    await expectProtocolError(client.request({ method: 'resources/list', params: {} }, EmptyResultSchema),
      ErrorCode.MethodNotFound, 'Method not found: resources/list');
    await client.ping();
  } finally {
    await client.close();
  }
  return toolCount;
}

// Below the SDK: what a careless client might write on the pipe never stops the server, and the
// server ends cleanly when its input closes.
async function rawSession() {
  const server = spawn(binary, ['serve'], { stdio: ['pipe', 'pipe', 'pipe'] });
  server.stderr.resume();
  const lines = createInterface({ input: server.stdout });
  const replies = [];
  lines.on('line', (line) => replies.push(JSON.parse(line)));
  const finished = Promise.all([once(server, 'exit'), once(lines, 'close')]);

  server.stdin.write('not json at all\n');
  server.stdin.write('\n');
  server.stdin.write('[{"jsonrpc":"2.0","id":1,"method":"ping"}]\r\n');
  server.stdin.write('{"jsonrpc":"2.0","method":"notifications/initialized"}\n');
  server.stdin.write('{"jsonrpc":"2.0","id":"half');
  server.stdin.write('-line","method":"ping"}\n');
  server.stdin.end('{"jsonrpc":"2.0","id":3,"method":"no/such/method"}');
  const [[exitCode]] = await finished;

  assert.equal(exitCode, 0);
  assert.deepEqual(replies.map((reply) => [reply.id, reply.error?.code ?? 'result']), [
    [null, -32700],
    [null, -32600],
    ['half-line', 'result'],
    [3, -32601],
  ]);
}

// A client that ends the server with SIGTERM (as the SDK does when closing stdin is not enough)
// still gets a clean exit: the session closes and the temporary sample project is removed.
async function terminatedSession() {
  const server = spawn(binary, ['serve'], { stdio: ['pipe', 'pipe', 'pipe'] });
  let log = '';
  server.stderr.on('data', (chunk) => { log += chunk; });
  const lines = createInterface({ input: server.stdout });
  const exited = once(server, 'exit');
  server.stdin.write('{"jsonrpc":"2.0","id":1,"method":"ping"}\n');
  const [reply] = await once(lines, 'line');
  assert.deepEqual(JSON.parse(reply), { jsonrpc: '2.0', id: 1, result: {} });
  server.kill('SIGTERM');
  const [exitCode] = await exited;
  assert.equal(exitCode, 128 + 15, log);
  const folder = /using the sample project in (\S+)/.exec(log)?.[1];
  assert.ok(folder, log);
  assert.equal(existsSync(folder), false, `${folder} is left behind`);
}

const toolCount = await sdkSession();
await rawSession();
await terminatedSession();
console.log(`calvorn-bp serve passed the MCP SDK client session (${toolCount} registered tools called), the raw pipe session and the SIGTERM exit`);
