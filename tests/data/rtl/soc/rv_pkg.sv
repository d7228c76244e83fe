`ifndef RV_PKG_SV
`define RV_PKG_SV
`timescale 1ns/1ps
package rv_pkg;
  parameter int unsigned XLEN = 32;
  typedef enum logic [6:0] { OP_LOAD = 7'h03, OP_IMM = 7'h13, OP_AUIPC = 7'h17, OP_STORE = 7'h23, OP_REG = 7'h33, OP_LUI = 7'h37, OP_BRANCH = 7'h63, OP_JALR = 7'h67, OP_JAL = 7'h6f, OP_SYSTEM = 7'h73 } opcode_e;
  typedef enum logic [3:0] { ALU_ADD, ALU_SUB, ALU_SLL, ALU_SLT, ALU_SLTU, ALU_XOR, ALU_SRL, ALU_SRA, ALU_OR, ALU_AND } alu_op_e;
  typedef struct packed { logic [6:0] funct7; logic [4:0] rs2; logic [4:0] rs1; logic [2:0] funct3; logic [4:0] rd; opcode_e opcode; } r_type_t;
  typedef union packed { logic [31:0] raw; r_type_t r; struct packed { logic [11:0] imm; logic [4:0] rs1; logic [2:0] funct3; logic [4:0] rd; opcode_e opcode; } i; } instr_t;
  typedef struct packed { logic valid; logic [XLEN-1:0] pc; instr_t instr; } fetch_t;
  typedef struct { logic [XLEN-1:0] a; logic [XLEN-1:0] b; alu_op_e op; } alu_in_t;
  function automatic logic [XLEN-1:0] sext12(input logic [11:0] imm);
    return {{(XLEN-12){imm[11]}}, imm};
  endfunction
  function automatic alu_op_e decode_alu(input logic [2:0] f3, input logic f7b, input bit is_imm);
    unique case (f3)
      3'b000: return (f7b && !is_imm) ? ALU_SUB : ALU_ADD;
      3'b001: return ALU_SLL;
      3'b010: return ALU_SLT;
      3'b011: return ALU_SLTU;
      3'b100: return ALU_XOR;
      3'b101: return f7b ? ALU_SRA : ALU_SRL;
      3'b110: return ALU_OR;
      default: return ALU_AND;
    endcase
  endfunction
  localparam logic [XLEN-1:0] RESET_PC [2] = '{32'h8000_0000, 32'h0000_1000};
  class scoreboard; rand int unsigned depth; string name; constraint c { depth inside {[1:16]}; } function new(string n = "sb"); name = n; endfunction endclass
endpackage : rv_pkg
`endif
