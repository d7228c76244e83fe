// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

`include "defs.svh"
`include "defs.svh"
import b_pkg::*;
interface strm #(type T = logic, int unsigned D = 2)(input clk, rst_n);
  T data; logic valid, ready; logic [D-1:0] cnt;
  modport src (output data, valid, input ready, clk); modport dst (input data, valid, clk, rst_n, output ready, import fire);
  function automatic bit fire(); return valid & ready; endfunction
  if (D > 1) begin : g_cnt logic [D-1:0] inner; always_ff @(posedge clk) if (fire()) inner <= inner + 1; assign cnt = inner; end
  assert property (@(posedge clk) disable iff (!rst_n) valid && !ready |=> $stable(data));
endinterface
module stage #(parameter type T = logic, parameter int P [3] = '{1,2,3}) (strm.dst i, strm.src o);
  T buf_q; logic full;
  always_ff @(posedge i.clk or negedge i.rst_n) if (!i.rst_n) full <= 0; else if (i.valid && i.ready) begin full <= 1'b1; buf_q <= i.data; end else if (o.ready) full <= 0;
  assign i.ready = !full || o.ready; assign o.valid = full; assign o.data = buf_q;
endmodule
module pipe #(parameter int N = 3, parameter type T = logic [7:0]) (input clk, rst_n, strm.dst in, strm.src out);
  strm #(.T(T)) s [N+1] (.clk, .rst_n);
  assign s[0].data = in.data, s[0].valid = in.valid; assign in.ready = s[0].ready;
  for (genvar k = 0; k < N; k++) begin : st stage #(.T(T)) u (.i(s[k]), .o(s[k+1])); end
  assign out.data = s[N].data; assign out.valid = s[N].valid; assign s[N].ready = out.ready;
endmodule
module top #(parameter int LANES = 2) (input logic clk, rst_n, en, input unit_word_t w, input reqs_t rq, output u_t u [LANES], output var logic [LANES-1:0][1:0] z, inout tri [3:0] io);
  module nested_mod(input a); wire deep_in; assign deep_in = a; endmodule
  nested_mod nm(.a(en));
  strm #(.T(unit_word_t), .D(4)) si(.*), so(.*);
  pipe #(.T(unit_word_t)) p(.clk, .rst_n, .in(si), .out(so));
  assign si.data = w; assign si.valid = en; assign so.ready = 1;
  `REG(req_t, hold, '0)
  `REG(logic [`NESTED(5)-1:0], wide, '1)
  cplx_t c; logic signed [7:0] mag; int idx; st_e s_next; logic `CONCAT3(my,macro,net);
  always_comb begin
    automatic logic [3:0] tmp; int n; tmp = '0; hold_d = hold_q; wide_d = wide_q; s_next = hold_q.st; n = 0;
    foreach (rq[i]) begin if (rq[i].v) continue; n += TABLE[i]; if (n > 4) break; end
    unique0 case (1'b1) rq[0].v: hold_d = mk(1'b1, S1); rq[1].v: hold_d = '{default: '1}; endcase
    if (rq[0].st inside {S0, [S2:LAST]} && w ==? 16'b1???_????_????_??01) tmp = ~w[3:0];
    idx = $countones(w) + int'(n); mag = 8'(signed'(c.re)) >>> 1; my_macro_net = ^tmp;
    for (int k = 0; k < LANES; k++) begin u[k].raw = {<<{rq[k % 2]}}; z[k] = w[2*k +: 2]; end
  end
  always_ff @(posedge clk iff en) {c.re, c.im} <= {w[7:0], w[15:8]};
  alias_mod am(.x(io[0]), .y(io[1])); wire type(w) same; assign same = w;
  if (a_pkg::NAME == "abc") begin wire named_str; end else begin : never wire n; end
  let sq(x) = x * x; specparam sp = 3; nettype logic my_net; timeunit 1ns/1ps;
  logic [7:0] mem2d [4][2]; always_ff @(posedge clk) mem2d[w[1:0]][en] <= w[7:0];
  enum bit {OFF, ON} anon; struct packed { logic a; logic [2:0] b; } anon_s; assign anon_s = '{a: en, b: 3'd0}; assign anon = ON;
  function void note(); $display("%s %m", s_next.name()); endfunction
  initial begin note(); void'($urandom); end
  a1: assert final (en !== 1'bx); c1: cover property (@(posedge clk) en ##1 !en); final $display("bye");
endmodule : top
module alias_mod(inout wire x, y); alias x = y; endmodule
