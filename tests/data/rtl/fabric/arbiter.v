// Round robin, in the style of 2001.
module arbiter (clk, rst, request, grant, valid);
  parameter PORTS = 2;
  localparam W = clog2(PORTS);
  input  wire             clk, rst;
  input  wire [PORTS-1:0] request;
  output reg  [PORTS-1:0] grant;
  output wire             valid;
  reg  [PORTS-1:0] mask;
  wire [PORTS-1:0] masked = request & mask;
  integer i;

  function integer clog2;
    input integer value;
    begin
      value = value - 1;
      for (clog2 = 0; value > 0; clog2 = clog2 + 1)
        value = value >> 1;
    end
  endfunction

  assign valid = |grant;
  always @(posedge clk or posedge rst)
    if (rst) begin
      grant <= 0;
      mask  <= {PORTS{1'b1}};
    end else begin : pick
      reg found;
      found = 1'b0;
      for (i = 0; i < PORTS; i = i + 1)
        if (!found && (|masked ? masked[i] : request[i])) begin
          grant <= 1 << i;
          mask  <= {PORTS{1'b1}} << (i + 1);
          found = 1'b1;
        end
    end
endmodule
