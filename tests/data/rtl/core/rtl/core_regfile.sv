`include "core_defines.svh"
module core_regfile #(parameter int N = 32) (
  input  logic                      clk_i, rst_ni, we_i,
  input  logic [`REG_BITS(N)-1:0]   ra_i, rb_i, wa_i,
  input  logic [`XLEN-1:0]          wd_i,
  output logic [`XLEN-1:0]          a_o, b_o
);
  logic [`XLEN-1:0] regs [N];
  for (genvar i = 0; i < N; i++) begin : gen_reg
    logic sel;
    assign sel = we_i && wa_i == i;
    if (i == 0) begin : gen_zero
      assign regs[i] = '0;
    end else begin : gen_flop
      `FF(regs[i], sel ? wd_i : regs[i], '0)
    end
  end
  assign a_o = regs[ra_i];
  assign b_o = regs[rb_i];
endmodule
