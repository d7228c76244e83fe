`include "rv_pkg.sv"
`default_nettype none
`define RV_ASSERT(name, prop, clk, rst) \
  `ifndef SYNTHESIS \
  name : assert property (@(posedge clk) disable iff (rst) (prop)) \
    else $error("assertion %s failed", `"name`"); \
  `endif
`define FFARNC(__q, __d, __en, __rstval, \
               __clk, __rst_n)          \
  always_ff @(posedge (__clk) or negedge (__rst_n)) begin \
    if (!__rst_n) begin __q <= (__rstval); end \
    else if (__en) begin __q <= (__d); end \
  end
interface mem_if #(parameter int AW = 32, parameter int DW = 32) (input logic clk, input logic rst_n);
  logic [AW-1:0] addr; logic [DW-1:0] wdata, rdata; logic [DW/8-1:0] be; logic we, req, gnt, rvalid;
  modport master (output addr, wdata, be, we, req, input rdata, gnt, rvalid, clk, rst_n, import idle);
  modport slave (input addr, wdata, be, we, req, clk, rst_n, output rdata, gnt, rvalid);
  function automatic logic idle(); return !req && !rvalid; endfunction
  clocking cb @(posedge clk); default input #1step output #2; input rdata, rvalid; output addr, req; endclocking
endinterface
module rv_regfile import rv_pkg::*; #(parameter int N = 32, localparam int AW = $clog2(N)) (
  input var logic clk, input wire logic rst_n,
  input logic [1:0][AW-1:0] raddr, output logic [1:0][XLEN-1:0] rdata,
  input logic [AW-1:0] waddr, input logic [XLEN-1:0] wdata, input logic we);
  logic [N-1:0][XLEN-1:0] regs;
  for (genvar g = 0; g < N; g++) begin : g_reg
    if (g == 0) begin : g_zero
      assign regs[g] = '0;
    end else begin : g_ff
      (* keep = "true", ram_style = "registers" *) logic hit;
      assign hit = we && waddr == AW'(g);
      `FFARNC(regs[g], wdata, hit, {XLEN{1'b0}},
              clk, rst_n)
    end
  end : g_reg
  always_comb foreach (rdata[i]) rdata[i] = regs[raddr[i]];
endmodule : rv_regfile
module rv_alu import rv_pkg::*; (input alu_in_t in, output logic [XLEN-1:0] out, output logic zero);
  logic [XLEN-1:0] shuffled, swapped;
  assign swapped = {<<8{in.a}};
  assign shuffled = {<<{in.b}};
  always_comb begin
    out = 'x;
    unique0 case (in.op) inside
      ALU_ADD: out = in.a + in.b;
      ALU_SUB: out = in.a - in.b;
      [ALU_SLL:ALU_SLL]: out = in.a << in.b[4:0];
      ALU_SLT: out = XLEN'($signed(in.a) < $signed(in.b));
      ALU_SLTU: out = XLEN'(in.a < in.b);
      ALU_XOR: out = in.a ^ in.b;
      ALU_SRL: out = in.a >> in.b[4:0];
      ALU_SRA: out = $signed(in.a) >>> in.b[4:0];
      ALU_OR: out = in.a | in.b;
      ALU_AND: out = in.a & in.b;
    endcase
  end
  assign zero = out == '0;
endmodule
module rv_core import rv_pkg::*; #(parameter bit PIPE = 1'b1, parameter type id_t = logic [3:0], parameter string NAME = "core", parameter real FREQ = 100.0e6)
 (input wire clk, input wire rst_n, mem_if.master ibus, mem_if.master dbus, input id_t hart, output id_t hart_o);
  fetch_t fetch_q, fetch_d; alu_in_t alu; logic [XLEN-1:0] alu_out, pc_q; logic zero, stall;
  logic [1:0][XLEN-1:0] rdata; logic [7:0] csr [0:3][2]; int unsigned cycle; time t0; event ev; longint mcycle;
  wire logic [3:0] tri_bus; trireg (small) keeper;
  `RV_ASSERT(a_pc, pc_q[0] == 1'b0, clk, !rst_n)
  assign stall = ~ibus.gnt | !dbus.idle();
  assign ibus.addr = pc_q; assign ibus.req = 1'b1; assign {ibus.we, ibus.be, ibus.wdata} = '0;
  always_ff @(posedge clk or negedge rst_n) if (!rst_n) begin pc_q <= RESET_PC[0]; fetch_q <= '{default: '0}; end
    else if (!stall) begin pc_q <= pc_q + 4; fetch_q <= fetch_d; end
  always_comb begin fetch_d = '{valid: ibus.rvalid, pc: pc_q, instr: ibus.rdata}; end
  assign alu.a = rdata[0]; assign alu.b = fetch_q.instr.r.opcode == OP_IMM ? sext12(fetch_q.instr.i.imm) : rdata[1];
  assign alu.op = decode_alu(fetch_q.instr.r.funct3, fetch_q.instr.r.funct7[5], fetch_q.instr.r.opcode == OP_IMM);
  rv_regfile #(.N(XLEN)) u_rf (.clk, .rst_n, .raddr({fetch_q.instr.r.rs2, fetch_q.instr.r.rs1}), .rdata(rdata), .waddr(fetch_q.instr.r.rd), .wdata(alu_out), .we(fetch_q.valid));
  rv_alu u_alu (.in(alu), .out(alu_out), .*);
  assign dbus.addr = alu_out, dbus.wdata = rdata[1], dbus.req = fetch_q.valid, dbus.we = 1'b0, dbus.be = '1;
  assign hart_o = hart;
  generate case (PIPE) 1'b1: begin : g_pipe always_ff @(posedge clk) for (int i = 0; i < 4; i++) csr[i][0] <= csr[i][1] + 8'(i); end
    default: begin : g_nopipe initial $display("no %s", NAME); end endcase endgenerate
  import "DPI-C" context function int dpi_trace(input int pc, output byte unsigned b[4]);
  export "DPI-C" task sv_tick; task sv_tick; #1; endtask
  initial begin automatic scoreboard sb; sb = new("x"); -> ev; t0 = $time; end
  covergroup cg @(posedge clk); option.per_instance = 1; cp : coverpoint alu.op { bins add = {ALU_ADD}; bins others[] = default; } x : cross cp, zero; endgroup
  cg cg_i = new;
  sequence s_req; ibus.req ##[1:3] ibus.gnt; endsequence
  property p_req; @(posedge clk) disable iff (!rst_n) ibus.req |-> s_req; endproperty
  c_req : cover property (p_req); 
  let max2(a, b) = (a > b) ? a : b;
  specify (clk => hart_o) = (1.0, 2.0); $setup(rst_n, posedge clk, 1); endspecify
endmodule
checker chk(logic c, logic d); a1 : assert property (@(posedge c) d); endchecker
program automatic test_prog(input logic clk); initial begin @(posedge clk); $finish; end endprogram
module rv_monitor(input logic clk, input logic [31:0] pc); logic [31:0] last; always_ff @(posedge clk) last <= pc; endmodule
bind rv_core rv_monitor u_mon (.clk(clk), .pc(pc_q));
module soc_top(input wire clk_p, clk_n, input wire rst_n, inout wire [3:0] gpio, output wire led);
  wire clk, locked;
  IBUFDS #(.DIFF_TERM("TRUE"), .IOSTANDARD("LVDS")) u_ibuf (.I(clk_p), .IB(clk_n), .O(clk));
  MMCME4_ADV #(.CLKFBOUT_MULT_F(8.0), .CLKOUT0_DIVIDE_F(10.0)) u_mmcm (.CLKIN1(clk), .LOCKED(locked), .CLKOUT0());
  for (genvar i = 0; i < 4; i++) begin : g_io
    wire o, t, in; assign o = i[0]; assign t = ~locked;
    IOBUF u (.IO(gpio[i]), .I(o), .O(in), .T(t));
  end
  mem_if ib(.clk, .rst_n), db(.clk, .rst_n);
  mem_if #(.AW(12)) banks [2] (.clk(clk), .rst_n(rst_n));
  rv_core #(.PIPE(1), .id_t(logic [7:0])) core (.clk, .rst_n, .ibus(ib), .dbus(db), .hart(8'd1), .hart_o());
  ram #(.INIT("nosuch.hex")) u_ram [1:0] (.clk(clk), .q());
  assign led = ^ib.rdata;
endmodule
module ram #(parameter INIT = "") (input wire clk, output logic [7:0] q); logic [7:0] mem [0:1023]; initial if (INIT != "") $readmemh(INIT, mem); always @(posedge clk) q <= mem[q]; endmodule
config cfg; design work.soc_top; default liblist work; instance soc_top.core use work.rv_core; endconfig
`default_nettype wire
