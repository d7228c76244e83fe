module mac_tx #(parameter int LANES = 2) (
  input logic clk, input logic [LANES-1:0][7:0] data_i, output logic [LANES-1:0] lane_o);
  logic [7:0] shift [LANES];
  typedef struct packed { logic valid; logic [1:0] keep; } beat_t;
  beat_t beats [LANES];
  always_ff @(posedge clk)
    foreach (shift[l]) shift[l] <= {shift[l][6:0], data_i[l][0]};
  for (genvar l = 0; l < LANES; l++) begin : gen_lane
    ODDR #(.SRTYPE("SYNC")) u_oddr (.C(clk), .D1(shift[l][7]), .D2(beats[l].valid), .Q(lane_o[l]));
    assign beats[l] = '{valid: 1'b1, keep: '1};
  end
endmodule
