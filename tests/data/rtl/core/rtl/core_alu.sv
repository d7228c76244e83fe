`include "core_defines.svh"
module core_alu import core_pkg::*; #(parameter type word_t = logic [`XLEN-1:0]) (
  input  alu_op_e op_i,
  input  word_t   a_i, b_i,
  output word_t   result_o
);
  word_t adder;
  assign adder = op_i == ALU_SUB ? a_i - b_i : a_i + b_i;
  always_comb begin
    unique case (op_i) inside
      ALU_ADD, ALU_SUB: result_o = adder;
      ALU_AND: result_o = a_i & b_i;
      ALU_OR:  result_o = a_i | b_i;
      ALU_XOR: result_o = a_i ^ b_i;
      default: result_o = {{($bits(word_t)-1){1'b0}}, $signed(a_i) < $signed(b_i)};
    endcase
  end
endmodule
