interface core_mem_if #(parameter int AW = 16, parameter int DW = 32) (input logic clk);
  logic [AW-1:0] addr;
  logic [DW-1:0] wdata, rdata;
  logic          req, gnt, we;
  modport master(output addr, wdata, req, we, input rdata, gnt, clk);
  modport slave(input addr, wdata, req, we, clk, output rdata, gnt);
endinterface
