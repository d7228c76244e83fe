// The names that SystemVerilog has reserved since are on purpose.
module mac_rx (input clk, input rst, input [7:0] do, input bit, output reg [31:0] crc,
               output reg priority);
  parameter [31:0] POLY = 32'hEDB88320;
  reg [2:0] final;
  wire \crc.next[0] = crc[0] ^ bit;
  function [31:0] step(input [31:0] state, input [7:0] byte);
    integer k;
    begin
      step = state ^ {24'd0, byte};
      for (k = 0; k < 8; k = k + 1)
        step = step[0] ? (step >> 1) ^ POLY : step >> 1;
    end
  endfunction
  always @(posedge clk)
    if (rst) begin crc <= 32'hffffffff; final <= 0; priority <= 0; end
    else begin crc <= step(crc, do); final <= final + 1; priority <= \crc.next[0] ; end
endmodule
