`include "core_defines.svh"
module core_top import core_pkg::*; #(
  parameter int unsigned HARTS = 2,
  parameter bit          DEBUG = 1'b0
) (
  input  logic             clk_i,
  input  logic             rst_ni,
  input  logic [3:0]       irq_i,
  output logic [HARTS-1:0] halted_o
);
  logic clk_gated;
  CLKGATE_X1 u_gate (.CK(clk_i), .E(rst_ni), .GCK(clk_gated));
  core_mem_if #(.AW(12)) mem [HARTS] (.clk(clk_gated));

  for (genvar h = 0; h < HARTS; h++) begin : gen_hart
    decoded_t dec;
    state_e   state_q, state_d;
    logic [`XLEN-1:0] opa, opb, res;
    core_alu #(.word_t(logic [`XLEN-1:0])) u_alu (.op_i(dec.op), .a_i(opa), .b_i(opb), .result_o(res));
    core_regfile u_regs (
      .clk_i(clk_gated), .rst_ni, .we_i(dec.we), .ra_i(dec.rs1), .rb_i(dec.rs2),
      .wa_i(dec.rd), .wd_i(res), .a_o(opa), .b_o(opb));
    core_sram u_sram (.bus(mem[h]));
    always_comb begin
      state_d = state_q;
      unique case (state_q)
        FETCH:   state_d = DECODE;
        DECODE:  state_d = EXECUTE;
        EXECUTE: state_d = WRITEBACK;
        default: state_d = FETCH;
      endcase
    end
    `FF(state_q, state_d, FETCH)
    assign dec = mem[h].rdata[$bits(decoded_t)-1:0];
    assign mem[h].addr = opa[11:0];
    assign mem[h].wdata = opb;
    assign mem[h].req = state_q == FETCH;
    assign mem[h].we = 1'b0;
    assign halted_o[h] = state_q == WRITEBACK & irq_i[h];
    `ASSERT_KNOWN(StateKnown, state_q)
  end
`ifdef VERILATOR
  logic only_for_verilator;
  assign only_for_verilator = nowhere.declared;
`endif
  // synthesis translate_off
  initial begin
    $display("simulating");
    no_such_task(clk_i);
  end
  // synthesis translate_on
  /* synopsys dc_script_begin */
  if (DEBUG) begin : gen_debug
    core_tracer u_tracer (.*);
  end
endmodule
