package core_pkg;
  typedef enum logic [2:0] {ALU_ADD, ALU_SUB, ALU_AND, ALU_OR, ALU_XOR, ALU_SLT} alu_op_e;
  typedef enum logic [1:0] {FETCH, DECODE, EXECUTE, WRITEBACK} state_e;
  typedef struct packed {
    logic [4:0]  rd;
    logic [4:0]  rs1;
    logic [4:0]  rs2;
    alu_op_e     op;
    logic        we;
  } decoded_t;
  localparam int unsigned Width[2] = '{32, 64};
  function automatic int unsigned max(int unsigned a, int unsigned b);
    return a > b ? a : b;
  endfunction
endpackage
